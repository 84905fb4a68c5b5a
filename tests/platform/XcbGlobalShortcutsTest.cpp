#include "platform/x11/XcbGlobalShortcuts.h"

#include "core/PreferencesStore.h"
#include "services/hotkey/GlobalHotkeyManager.h"
#include "services/hotkey/KeyboardShortcuts.h"
#include "support/MemoryDefaultsStore.h"
#include "support/QtEventLoopTest.h"
#include "support/XcbTestClient.h"

#include <chrono>
#include <cstdlib>
#include <gtest/gtest.h>
#include <string>

namespace tovrin {
namespace {

using namespace std::chrono_literals;

// Key presses typed through XTEST on the private X server of run-x11-tests.sh, as a keyboard would.
class XcbGlobalShortcutsTest : public test::QtEventLoopTest {
protected:
    void SetUp() override {
        if (!test::XcbTestClient::onPrivateDisplay())
            GTEST_SKIP() << "needs the private X server of run-x11-tests.sh";
        if (std::system("command -v xdotool >/dev/null") != 0) GTEST_SKIP() << "xdotool not found";
    }

    static void type(const std::string& keys) {
        ASSERT_EQ(std::system(("xdotool key " + keys).c_str()), 0) << keys;
    }
};

TEST_F(XcbGlobalShortcutsTest, TheShortcutTogglesTheChipWhateverTheLockKeys) {
    MemoryDefaultsStore store;
    PreferencesStore preferences(store);
    XcbGlobalShortcuts desktop;
    KeyboardShortcuts shortcuts(store, desktop);
    GlobalHotkeyManager manager(preferences, shortcuts);
    manager.start();
    ASSERT_TRUE(shortcuts.isRegistered({'e', ShortcutModifier::control | ShortcutModifier::alt}));

    type("ctrl+alt+e");
    EXPECT_TRUE(pumpUntil([&] { return !preferences.showFloatingChip(); }));
    // Num Lock and Caps Lock on add their bits to every press.
    type("Num_Lock Caps_Lock ctrl+alt+e");
    EXPECT_TRUE(pumpUntil([&] { return preferences.showFloatingChip(); }));
    type("Num_Lock Caps_Lock");

    // Other keys and the shortcut's key with other modifiers don't count.
    type("ctrl+alt+r ctrl+e ctrl+alt+shift+e");
    pumpFor(200ms);
    EXPECT_TRUE(preferences.showFloatingChip());
}

TEST_F(XcbGlobalShortcutsTest, AGrabOfAnotherClientIsHeldUntilItLetsGo) {
    const Shortcut superF9{0xffc6, ShortcutModifier::super};
    auto other = std::make_unique<XcbGlobalShortcuts>();
    XcbGlobalShortcuts ours;
    ASSERT_EQ(other->registerShortcut(superF9), ShortcutRegistration::registered);
    EXPECT_EQ(ours.registerShortcut(superF9), ShortcutRegistration::heldByAnotherProgram);

    other->unregisterShortcut(superF9);
    EXPECT_EQ(ours.registerShortcut(superF9), ShortcutRegistration::registered);
    // Dropped grabs: a client that quits leaves the key to others.
    ours.unregisterShortcut(superF9);
    ASSERT_EQ(other->registerShortcut(superF9), ShortcutRegistration::registered);
    other.reset();
    EXPECT_EQ(ours.registerShortcut(superF9), ShortcutRegistration::registered);
    EXPECT_EQ(ours.registerShortcut({0x1234567, 0}), ShortcutRegistration::failed) << "no key gives it";
}

} // namespace
} // namespace tovrin
