#include "services/hotkey/KeyboardShortcuts.h"

#include "core/PreferencesStore.h"
#include "services/hotkey/GlobalHotkeyManager.h"
#include "support/FakeGlobalShortcuts.h"
#include "support/MemoryDefaultsStore.h"

#include <gtest/gtest.h>
#include <memory>
#include <string>
#include <vector>

namespace tovrin {
namespace {

using nlohmann::json;

const std::string key = "KeyboardShortcuts_toggleFloatingChip";
constexpr Shortcut ctrlAltE{'e', ShortcutModifier::control | ShortcutModifier::alt};
constexpr Shortcut superF5{0xffc2, ShortcutModifier::super};

TEST(ShortcutTest, OnlyAKeyWithTheFourModifierBitsDecodes) {
    EXPECT_EQ(decodeShortcut(encodeShortcut(superF5)), superF5);
    EXPECT_EQ(decodeShortcut(R"({"keySym":101,"modifiers":12})"), ctrlAltE);
    for (const char* text :
         {R"({"keySym":101})", R"({"keySym":0,"modifiers":4})", R"({"keySym":-1,"modifiers":4})",
          R"({"keySym":101,"modifiers":32768})", R"({"keySym":"e","modifiers":4})",
          R"({"keySym":101,"modifiers":4.5})", "[101,12]", "{", ""})
        EXPECT_EQ(decodeShortcut(text), std::nullopt) << text;
}

TEST(ShortcutTest, KeysReadAsTheKeyboardShowsThem) {
    // Shift+E arrives as "E" with Num Lock's and Caps Lock's bits: the same key as "e".
    EXPECT_EQ(normalisedShortcut('E', ShortcutModifier::shift | ShortcutModifier::control | 2 | 16),
              (Shortcut{'e', ShortcutModifier::shift | ShortcutModifier::control}));
    EXPECT_EQ(presentableDescription(ctrlAltE), "Ctrl+Alt+E");
    EXPECT_EQ(presentableDescription({0xffc2, ShortcutModifier::super | ShortcutModifier::shift}),
              "Shift+Super+F5");
    EXPECT_EQ(presentableDescription({0xe9, ShortcutModifier::control}), "Ctrl+É");
    EXPECT_EQ(presentableDescription({0x10020ac, ShortcutModifier::alt}), "Alt+€");
}

struct Launch {
    explicit Launch(MemoryDefaultsStore& store)
        : shortcuts(store, desktop, [this](const std::string& line) { logged.push_back(line); }) {}
    test::FakeGlobalShortcuts desktop;
    std::vector<std::string> logged;
    KeyboardShortcuts shortcuts;
};

TEST(KeyboardShortcutsTest, TheDefaultIsStoredOnceAndNeverOverAValue) {
    MemoryDefaultsStore fresh;
    Launch first(fresh);
    EXPECT_EQ(first.shortcuts.getShortcut(ShortcutName::toggleFloatingChip()), ctrlAltE);
    EXPECT_EQ(decodeShortcut(fresh.object(key)->get<std::string>()), ctrlAltE);
    EXPECT_TRUE(first.desktop.registered.contains(ctrlAltE));

    struct Case {
        json stored;
        std::optional<Shortcut> read;
    };
    for (const Case& c : {Case{encodeShortcut(superF5), superF5}, Case{false, std::nullopt},
                          Case{"not a shortcut", std::nullopt}, Case{12, std::nullopt}}) {
        MemoryDefaultsStore store({{key, c.stored}});
        Launch launch(store);
        EXPECT_EQ(launch.shortcuts.getShortcut(ShortcutName::toggleFloatingChip()), c.read) << c.stored;
        EXPECT_EQ(store.object(key), c.stored);
        EXPECT_EQ(store.writeCount(), 0u);
    }
}

TEST(KeyboardShortcutsTest, AClearedDefaultStaysClearedAcrossLaunches) {
    MemoryDefaultsStore store;
    {
        Launch launch(store);
        launch.shortcuts.setShortcut(std::nullopt, ShortcutName::toggleFloatingChip());
        EXPECT_TRUE(launch.desktop.registered.empty());
    }
    EXPECT_EQ(store.object(key), json(false));
    Launch next(store);
    EXPECT_EQ(next.shortcuts.getShortcut(ShortcutName::toggleFloatingChip()), std::nullopt);

    // A name without a default has nothing to keep out, so clearing forgets it.
    const ShortcutName plain{"plain", std::nullopt};
    next.shortcuts.setShortcut(superF5, plain);
    next.shortcuts.setShortcut(std::nullopt, plain);
    EXPECT_FALSE(store.object(plain.key()));
}

TEST(KeyboardShortcutsTest, PressesFlipTheChipOnlyWhileNothingRecordsAndTheManagerLives) {
    MemoryDefaultsStore store;
    PreferencesStore preferences(store);
    Launch launch(store);
    auto manager = std::make_unique<GlobalHotkeyManager>(preferences, launch.shortcuts);
    manager->start();
    manager->start();

    launch.desktop.press(ctrlAltE);
    EXPECT_FALSE(preferences.showFloatingChip()) << "started twice, it would flip twice";
    launch.desktop.press(ctrlAltE);
    EXPECT_TRUE(preferences.showFloatingChip());

    launch.shortcuts.setPaused(true);
    launch.desktop.press(ctrlAltE);
    EXPECT_TRUE(preferences.showFloatingChip());
    launch.shortcuts.setPaused(false);

    // A new shortcut replaces the old one with the desktop; clearing gives it back.
    launch.shortcuts.setShortcut(superF5, ShortcutName::toggleFloatingChip());
    EXPECT_EQ(launch.desktop.registered, std::set<Shortcut>{superF5});
    launch.desktop.press(superF5);
    EXPECT_FALSE(preferences.showFloatingChip());

    manager.reset();
    launch.desktop.press(superF5);
    EXPECT_FALSE(preferences.showFloatingChip());
    launch.shortcuts.setShortcut(std::nullopt, ShortcutName::toggleFloatingChip());
    EXPECT_TRUE(launch.desktop.registered.empty());
}

TEST(KeyboardShortcutsTest, AShortcutAnotherProgramHoldsIsKeptAndToldOnce) {
    MemoryDefaultsStore store({{key, false}});
    Launch launch(store);
    launch.desktop.heldElsewhere.insert(ctrlAltE);
    EXPECT_EQ(launch.shortcuts.probe(ctrlAltE), ShortcutRegistration::heldByAnotherProgram);
    EXPECT_EQ(launch.shortcuts.probe(superF5), ShortcutRegistration::registered);
    EXPECT_TRUE(launch.desktop.registered.empty()) << "a probe keeps nothing";

    launch.shortcuts.setShortcut(ctrlAltE, ShortcutName::toggleFloatingChip());
    auto subscription = launch.shortcuts.onKeyDown(ShortcutName::toggleFloatingChip(), [] {});
    EXPECT_EQ(launch.shortcuts.getShortcut(ShortcutName::toggleFloatingChip()), ctrlAltE);
    EXPECT_FALSE(launch.shortcuts.isRegistered(ctrlAltE));
    EXPECT_EQ(launch.logged,
              std::vector<std::string>{"Error registering hotkey Ctrl+Alt+E: held by another program"});
}

} // namespace
} // namespace tovrin
