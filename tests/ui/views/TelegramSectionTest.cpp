#include "ui/views/settings/TelegramSection.h"

#include "support/FakeTelegramPorts.h"
#include "alerts/telegram/TelegramSettingsViewModel.h"
#include "support/MemoryDefaultsStore.h"
#include "support/RenderedImages.h"
#include "support/ScopedEnv.h"
#include "support/SettleEvents.h"
#include "ui/theme/ForgeTheme.h"
#include "ui/theme/ForgeToggle.h"
#include "ui/views/settings/SettingsStyle.h"
#include "ui/views/settings/TelegramSetupHelp.h"

#include <QAbstractButton>
#include <QApplication>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>
#include <gtest/gtest.h>

namespace tovrin {
namespace {

struct TelegramSectionTest : ::testing::Test {
    TelegramSectionTest() {
        host.setPalette(SettingsStyle::palette(host.palette()));
        host.setStyleSheet(SettingsStyle::styleSheet());
        host.setAutoFillBackground(true);
        host.setFixedWidth(469);
        auto* column = new QVBoxLayout(&host);
        column->addWidget(section);
        column->addStretch(1);
        host.show();
        test::settleEvents();
    }
    void type(const QString& text) {
        for (const QChar ch : text) {
            QKeyEvent key(QEvent::KeyPress, 0, Qt::NoModifier, QString(ch));
            QApplication::sendEvent(section->tokenField(), &key);
        }
    }
    void snapshot(const QString& name) {
        host.adjustSize();
        test::saveArtifact(host.grab().toImage(), name);
    }
    // Which of the field and the three buttons take input, in their order on screen.
    std::vector<bool> enabled() const {
        return {section->tokenField()->isEnabled(), section->verifyButton()->isEnabled(),
                section->linkButton()->isEnabled(), section->testButton()->isEnabled()};
    }

    // The switch's thumb stands at its end at once, so every picture shows it where it rests.
    test::ScopedEnv stillMotion{"TOVRIN_REDUCE_MOTION", "1"};
    MemoryDefaultsStore defaults;
    PreferencesStore preferences{defaults};
    test::MemorySecrets secrets;
    test::FakeMessenger messenger;
    TelegramSettingsViewModel model{messenger, secrets, preferences};
    std::vector<QUrl> opened;
    QWidget host;
    TelegramSection* section =
        new TelegramSection(model, preferences, nullptr, [this](const QUrl& url) { opened.push_back(url); });
};

TEST_F(TelegramSectionTest, TheButtonsOpenInTheirOrderOfUseAndTheStatusLineFollows) {
    using V = std::vector<bool>;
    EXPECT_EQ(enabled(), (V{false, false, false, false})) << "off by default";
    EXPECT_FALSE(section->statusLine()->isVisible());
    section->enabledToggle()->click();
    EXPECT_TRUE(preferences.telegramEnabled());
    test::settleEvents();
    EXPECT_EQ(enabled(), (V{true, false, false, false})) << "nothing to verify yet";

    type(QStringLiteral("123:ABC"));
    EXPECT_EQ(model.botToken(), "123:ABC");
    test::settleEvents();
    EXPECT_EQ(enabled(), (V{true, true, false, false}));

    section->verifyButton()->click();
    ASSERT_EQ(messenger.calls.size(), 1u);
    EXPECT_EQ(messenger.calls[0].token, "123:ABC");
    test::settleEvents();
    EXPECT_EQ(enabled(), (V{false, false, false, false})) << "one operation at a time";
    EXPECT_TRUE(section->statusLine()->isVisible());
    EXPECT_TRUE(section->spinner()->isVisible()) << "the spinner turns";
    snapshot(QStringLiteral("telegram-section-working"));

    messenger.fail(TelegramError::unauthorized());
    test::settleEvents();
    EXPECT_EQ(section->statusText()->text().toStdString(), model.phase().message);
    EXPECT_EQ(section->statusText()->palette().color(QPalette::WindowText),
              ForgeStyle::qColor(ForgeTheme::waitingRed));
    EXPECT_FALSE(section->spinner()->isVisible());
    snapshot(QStringLiteral("telegram-section-failed"));

    section->verifyButton()->click();
    messenger.succeed<std::string>("@helper_bot");
    test::settleEvents();
    EXPECT_EQ(section->botUsernameLabel()->text(), QStringLiteral("@helper_bot"));
    EXPECT_TRUE(section->botUsernameLabel()->isVisible());
    EXPECT_EQ(enabled(), (V{true, true, true, false}));

    section->linkButton()->click();
    messenger.succeed(TelegramChat{-1001, "Ops room", std::nullopt, std::nullopt});
    test::settleEvents();
    EXPECT_EQ(section->chatLabel()->text(), QStringLiteral("Ops room"));
    section->testButton()->click();
    ASSERT_EQ(messenger.calls.back().operation, "sendMessage");
    messenger.succeedSending();
    test::settleEvents();
    EXPECT_EQ(section->statusText()->palette().color(QPalette::WindowText),
              ForgeStyle::qColor(ForgeTheme::ember));
    snapshot(QStringLiteral("telegram-section-test-sent"));

    preferences.telegramEnabled.set(false);
    test::settleEvents();
    EXPECT_FALSE(section->enabledToggle()->isChecked()) << "follows a change made elsewhere";
    EXPECT_EQ(enabled(), (V{false, false, false, false}));
}

TEST_F(TelegramSectionTest, TheSetupHelpOpensFromTheKeyboardAndLinksToBotFather) {
    secrets.values[TelegramSecretKeys::botToken] = "stored";
    model.load();
    test::settleEvents();
    EXPECT_EQ(section->tokenField()->text(), QStringLiteral("stored")) << "the field shows what load read";

    TelegramSetupHelp* help = section->setupHelp();
    EXPECT_FALSE(help->link()->isVisible()) << "closed at the start";
    help->disclosure()->setFocus();
    QKeyEvent space(QEvent::KeyPress, Qt::Key_Space, Qt::NoModifier, QStringLiteral(" "));
    QKeyEvent spaceUp(QEvent::KeyRelease, Qt::Key_Space, Qt::NoModifier, QStringLiteral(" "));
    QApplication::sendEvent(help->disclosure(), &space);
    QApplication::sendEvent(help->disclosure(), &spaceUp);
    EXPECT_TRUE(help->link()->isVisible());
    snapshot(QStringLiteral("telegram-section-setup-open"));

    help->link()->click();
    ASSERT_EQ(opened.size(), 1u);
    EXPECT_EQ(opened[0].host(), QStringLiteral("t.me"));
    EXPECT_EQ(opened[0].path().toLower(), QStringLiteral("/botfather"));
}

} // namespace
} // namespace tovrin
