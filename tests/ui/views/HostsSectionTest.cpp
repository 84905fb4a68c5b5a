#include "ui/views/settings/HostsSection.h"

#include "core/PreferencesStore.h"
#include "support/MemoryDefaultsStore.h"
#include "support/RenderedImages.h"
#include "support/SettleEvents.h"
#include "support/WidgetInput.h"
#include "ui/views/settings/SettingsStyle.h"

#include <QApplication>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <gtest/gtest.h>

namespace tovrin {
namespace {

void typeInto(QWidget* field, const QString& text) {
    for (const QChar ch : text) {
        QKeyEvent key(QEvent::KeyPress, 0, Qt::NoModifier, QString(ch));
        QApplication::sendEvent(field, &key);
    }
}

void press(QWidget* button) {
    test::click(button, button->rect().center());
    test::settleEvents();
}

// Typed and pressed as a user does: the field takes keys, Return adds, a row's button removes.
TEST(HostsSectionTest, AddsWhatSshCanTakeSaysWhyNotOtherwiseAndRemovesByTheRowsButton) {
    MemoryDefaultsStore defaults;
    PreferencesStore preferences(defaults);
    HostsSection section(preferences);
    section.setStyleSheet(SettingsStyle::styleSheet());
    section.setFixedWidth(469);
    section.show();
    test::settleEvents();
    EXPECT_TRUE(section.removeButtons().empty());

    typeInto(section.destinationField(), QStringLiteral("-oProxyCommand=x"));
    press(section.addButton());
    EXPECT_TRUE(preferences.remoteHosts().empty());
    EXPECT_TRUE(section.refusal()->isVisible());
    EXPECT_TRUE(section.refusal()->text().contains(QStringLiteral("option")));

    section.destinationField()->clear();
    typeInto(section.destinationField(), QStringLiteral(" dev@build "));
    QKeyEvent enter(QEvent::KeyPress, Qt::Key_Return, Qt::NoModifier);
    QApplication::sendEvent(section.destinationField(), &enter);
    test::settleEvents();
    EXPECT_EQ(preferences.remoteHosts(), std::vector<std::string>{"dev@build"});
    EXPECT_FALSE(section.refusal()->isVisible());
    EXPECT_TRUE(section.destinationField()->text().isEmpty());
    ASSERT_EQ(section.removeButtons().size(), 1u);
    EXPECT_EQ(section.removeButtons()[0]->accessibleName(), QStringLiteral("Remove dev@build"));
    test::saveArtifact(section.grab().toImage(), QStringLiteral("settings-hosts"));

    press(section.removeButtons()[0]);
    EXPECT_TRUE(preferences.remoteHosts().empty());
    EXPECT_TRUE(section.removeButtons().empty());
}

} // namespace
} // namespace tovrin
