#include "ui/views/settings/PreferencesView.h"

#include "alerts/SoundCatalog.h"
#include "support/FakeTelegramPorts.h"
#include "alerts/telegram/TelegramSettingsViewModel.h"
#include "core/PreferencesStore.h"
#include "hooks/ToolIdentity.h"
#include "services/LoginItemManager.h"
#include "services/hotkey/KeyboardShortcuts.h"
#include "support/FakeAlertPorts.h"
#include "support/FakeGlobalShortcuts.h"
#include "support/FakeSoundPorts.h"
#include "support/MemoryLoginItems.h"
#include "support/MemoryDefaultsStore.h"
#include "support/RenderedImages.h"
#include "support/SettleEvents.h"
#include "support/TempDir.h"
#include "support/WidgetInput.h"
#include "ui/theme/ForgeToggle.h"
#include "ui/viewmodels/HookSettingsViewModel.h"
#include "ui/views/ShortcutRecorder.h"
#include "ui/views/settings/AlertsSettingsPage.h"
#include "ui/views/settings/SettingsComboBox.h"
#include "ui/views/settings/SettingsStepper.h"
#include "ui/views/settings/WindowSettingsPage.h"

#include <QAccessible>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSlider>
#include <filesystem>
#include <gtest/gtest.h>

namespace tovrin {
namespace {

namespace fs = std::filesystem;

QString accessibleName(QWidget* widget) {
    QAccessibleInterface* node = QAccessible::queryAccessibleInterface(widget);
    return node ? node->text(QAccessible::Name) : QString();
}

// The controls have no meta-object of their own, so they are told apart by their C++ type.
template <class T> T* named(QWidget* root, const QString& name) {
    for (QWidget* widget : root->findChildren<QWidget*>())
        if (auto* match = dynamic_cast<T*>(widget); match && accessibleName(widget) == name) return match;
    ADD_FAILURE() << "nothing named " << name.toStdString();
    return nullptr;
}

void clickMiddle(QWidget* widget) {
    test::click(widget, widget->rect().center());
    test::settleEvents();
}

struct PreferencesViewTest : ::testing::Test {
    test::TempDir home;
    MemoryDefaultsStore defaults;
    PreferencesStore preferences{defaults};
    test::MemoryLoginItems loginSystem;
    LoginItemManager loginItems{loginSystem};
    test::MemorySecrets secrets;
    test::FakeMessenger messenger;
    TelegramSettingsViewModel telegram{messenger, secrets, preferences};
    CustomSoundManager customSounds{home.path() / "sounds"};
    test::FakeSoundPlayer player;
    SoundCatalog catalog{home.path() / "Sounds", customSounds, player};
    test::ScriptedSoundChooser chooser;
    std::vector<fs::path> revealed;
    HookSettingsViewModel* hooks = nullptr;
    test::FakeGlobalShortcuts desktopShortcuts;
    KeyboardShortcuts shortcuts{defaults, desktopShortcuts};
    fs::path horn = home.write("Sounds/horn-of-gondor.wav", "RIFF");

    std::unique_ptr<PreferencesView> open() {
        PreferencesEnvironment environment{
            preferences,
            loginItems,
            telegram,
            {catalog, player, [this](const fs::path& folder) { revealed.push_back(folder); }, &chooser},
            [this] {
                auto model = std::make_unique<HookSettingsViewModel>(
                    std::nullopt, home.path(), JQLocator({home.path() / "bin" / "jq"}, "/usr/bin/jq"));
                hooks = model.get();
                return model;
            },
            shortcuts};
        auto window = std::make_unique<PreferencesView>(environment);
        window->present();
        test::settleEvents();
        return window;
    }
};

TEST_F(PreferencesViewTest, EveryPageIsDrawnWithNamedControls) {
    const auto window = open();
    for (const SettingsCategory category : allSettingsCategories) {
        window->select(category);
        test::settleEvents();
        test::saveArtifact(window->grab().toImage(),
                           QStringLiteral("settings-%1").arg(rawValue(category).data()));
        for (QWidget* control : window->page(category)->findChildren<QWidget*>()) {
            const bool isControl = qobject_cast<QAbstractButton*>(control) ||
                                   qobject_cast<QComboBox*>(control) || qobject_cast<QSlider*>(control) ||
                                   qobject_cast<QLineEdit*>(control);
            if (!isControl || !control->isVisibleTo(window.get())) continue;
            EXPECT_FALSE(accessibleName(control).isEmpty())
                << rawValue(category) << ": " << control->metaObject()->className() << " "
                << control->property("text").toString().toStdString();
            if (auto* toggle = dynamic_cast<ForgeToggle*>(control)) {
                EXPECT_TRUE(toggle->isCheckable());
                EXPECT_EQ(accessibleName(toggle), toggle->text());
            }
        }
    }
}

TEST_F(PreferencesViewTest, TheSidebarMovesWithArrowsAndTabLeadsIntoThePage) {
    const auto window = open();
    QWidget* sidebar = QApplication::focusWidget();
    ASSERT_NE(sidebar, nullptr);
    for (const Qt::Key key : {Qt::Key_Down, Qt::Key_Tab}) {
        QKeyEvent press(QEvent::KeyPress, key, Qt::NoModifier);
        QApplication::sendEvent(QApplication::focusWidget(), &press);
        test::settleEvents();
    }
    EXPECT_EQ(window->selection(), SettingsCategory::alerts);
    ASSERT_NE(QApplication::focusWidget(), nullptr);
    EXPECT_TRUE(window->page(SettingsCategory::alerts)->isAncestorOf(QApplication::focusWidget()));
}

TEST_F(PreferencesViewTest, TogglesWriteTheirSettingAndFollowChangesMadeElsewhere) {
    const auto window = open();
    const auto flipAndFollow = [&](SettingsCategory category, const QString& text,
                                   const std::function<bool()>& read,
                                   const std::function<void(bool)>& write) {
        window->select(category);
        auto* toggle = named<ForgeToggle>(window->page(category), text);
        ASSERT_NE(toggle, nullptr);
        const bool before = read();
        EXPECT_EQ(toggle->isChecked(), before) << text.toStdString();
        clickMiddle(toggle);
        EXPECT_EQ(read(), !before) << text.toStdString();
        write(before);
        test::settleEvents();
        EXPECT_EQ(toggle->isChecked(), before) << text.toStdString() << " follows the store";
    };
    struct Case {
        SettingsCategory category;
        const char* text;
        Property<bool> PreferencesStore::*property;
    };
    for (const Case& c : {
             Case{SettingsCategory::general, "Treat a silent working agent as waiting",
                  &PreferencesStore::flagSilentWorking},
             Case{SettingsCategory::general, "Share anonymous usage statistics",
                  &PreferencesStore::usageAnalyticsEnabled},
             Case{SettingsCategory::alerts, "Play a sound when an agent starts waiting",
                  &PreferencesStore::soundEnabled},
             Case{SettingsCategory::alerts, "Show a notification banner",
                  &PreferencesStore::notificationBannerEnabled},
             Case{SettingsCategory::alerts, "Repeat the alert while still waiting",
                  &PreferencesStore::repeatReminderEnabled},
             Case{SettingsCategory::window, "Only show it when an agent is waiting",
                  &PreferencesStore::chipOnlyWhenWaiting},
             Case{SettingsCategory::window, "Floating window (always on top)",
                  &PreferencesStore::showFloatingChip},
         }) {
        Property<bool>& property = preferences.*c.property;
        flipAndFollow(
            c.category, QString::fromUtf8(c.text), [&] { return property(); },
            [&](bool on) { property.set(on); });
    }
    const ToolIdentity& tool = ToolIdentity::all().back();
    flipAndFollow(
        SettingsCategory::tools, QString::fromStdString(tool.displayName),
        [&] { return preferences.isToolEnabled(tool.id); },
        [&](bool on) { preferences.setTool(tool.id, on); });
}

TEST_F(PreferencesViewTest, DependentControlsGreyOutAndTheLoginToggleShowsTheSystemsAnswer) {
    const auto window = open();
    auto* windowPage = static_cast<WindowSettingsPage*>(window->page(SettingsCategory::window));
    auto* alertsPage = static_cast<AlertsSettingsPage*>(window->page(SettingsCategory::alerts));
    auto* onlyWhenWaiting =
        named<ForgeToggle>(windowPage, QStringLiteral("Only show it when an agent is waiting"));
    SettingsStepper* repeatStepper = alertsPage->repeatStepper();

    preferences.chipOpacity.set(47.6);
    for (const bool on : {false, true}) {
        preferences.showFloatingChip.set(on);
        preferences.soundEnabled.set(on);
        preferences.repeatReminderEnabled.set(on);
        test::settleEvents();
        EXPECT_EQ(onlyWhenWaiting->isEnabled(), on);
        EXPECT_EQ(windowPage->opacitySlider()->isEnabled(), on);
        EXPECT_TRUE(windowPage->shortcutRecorder()->isEnabled()) << "the shortcut is never greyed out";
        EXPECT_EQ(alertsPage->soundPicker()->list()->isEnabled(), on);
        EXPECT_TRUE(alertsPage->soundPicker()->addButton()->isEnabled());
        EXPECT_EQ(repeatStepper->isEnabled(), on);
    }
    EXPECT_EQ(preferences.chipOpacity(), 47.6) << "showing the slider writes nothing back";

    loginSystem.refuses = true;
    window->select(SettingsCategory::general);
    auto* launch =
        named<ForgeToggle>(window->page(SettingsCategory::general), QStringLiteral("Launch at login"));
    clickMiddle(launch);
    EXPECT_FALSE(launch->isChecked()) << "a refused registration snaps back";
}

TEST_F(PreferencesViewTest, TheSoundPickerPreviewsAddsRemovesAndShowsMissingSounds) {
    const auto window = open();
    window->select(SettingsCategory::alerts);
    test::settleEvents();
    AlertSoundPicker* picker =
        static_cast<AlertsSettingsPage*>(window->page(SettingsCategory::alerts))->soundPicker();

    // The keyboard steps over section headings: nothing is above the first sound.
    for (const auto& [key, expected] :
         {std::pair{Qt::Key_Up, "horn-of-gondor"}, {Qt::Key_Down, "horns-of-vengeance"}}) {
        QKeyEvent press(QEvent::KeyPress, key, Qt::NoModifier);
        QApplication::sendEvent(picker->list(), &press);
        test::settleEvents();
        EXPECT_EQ(preferences.alertSound(), expected);
    }
    EXPECT_TRUE(player.played.empty()) << "only the horn has a file here";

    chooser.answers.push_back(home.write("picked/beep.WAV", "RIFF"));
    clickMiddle(picker->addButton());
    EXPECT_EQ(preferences.alertSound(), "custom:beep.WAV");
    ASSERT_FALSE(player.played.empty());
    EXPECT_EQ(player.played.back(), home.path() / "sounds" / "beep.WAV");
    EXPECT_TRUE(picker->removeButton()->isEnabled());

    clickMiddle(picker->removeButton());
    EXPECT_EQ(preferences.alertSound(), "horn-of-gondor");
    EXPECT_EQ(player.played.back(), horn);
    EXPECT_FALSE(picker->removeButton()->isEnabled());

    chooser.answers.push_back(home.write("picked/tune.mp3", "ID3"));
    clickMiddle(picker->addButton());
    EXPECT_EQ(preferences.alertSound(), "horn-of-gondor");
    EXPECT_TRUE(picker->caption()->text().startsWith(QStringLiteral("MP3")))
        << picker->caption()->text().toStdString();

    preferences.alertSound.set("custom:gone.aiff");
    test::settleEvents();
    EXPECT_EQ(picker->list()->currentText(), QStringLiteral("gone"));
    EXPECT_NE(picker->list()->findText(QStringLiteral("Missing")), -1);
    test::saveArtifact(window->grab().toImage(), QStringLiteral("settings-alerts-missing-sound"));

    clickMiddle(picker->openFolderButton());
    EXPECT_EQ(revealed, std::vector<fs::path>{home.path() / "sounds"});
}

TEST_F(PreferencesViewTest, PresentingAgainReadsTheLoginItemTelegramAndHooksAgain) {
    const auto window = open();
    ASSERT_NE(hooks, nullptr);
    EXPECT_EQ(hooks->jq().kind, JQLocator::Availability::Kind::missing);

    loginSystem.enabled = true;
    secrets.values[TelegramSecretKeys::botToken] = "123:abc";
    const fs::path jq = home.write("bin/jq", "#!/bin/sh\n");
    fs::permissions(jq, fs::perms::owner_all);
    window->present();
    test::settleEvents();

    EXPECT_TRUE(named<ForgeToggle>(window->page(SettingsCategory::general), QStringLiteral("Launch at login"))
                    ->isChecked());
    EXPECT_EQ(telegram.botToken(), "123:abc");
    EXPECT_EQ(hooks->jq().kind, JQLocator::Availability::Kind::userInstalled);
}

} // namespace
} // namespace tovrin
