#include "platform/x11/XcbGlobalShortcuts.h"

#include "support/QtEventLoopTest.h"
#include "support/ShellCommand.h"
#include "support/XcbTestClient.h"

#include <chrono>
#include <cstdlib>
#include <gtest/gtest.h>
#include <memory>
#include <string>
#include <vector>

namespace tovrin {
namespace {

using namespace std::chrono_literals;

// Key presses typed through XTEST on the private X server of run-x11-tests.sh, as a keyboard would.
class XcbGlobalShortcutsTest : public test::QtEventLoopTest {
protected:
    void SetUp() override {
        if (!test::XcbTestClient::onPrivateDisplay())
            GTEST_SKIP() << "needs the private X server of run-x11-tests.sh";
        if (!test::haveProgram("xdotool")) GTEST_SKIP() << "xdotool not found";
    }

    static void type(const std::string& keys) {
        ASSERT_EQ(std::system(("xdotool key " + keys).c_str()), 0) << keys;
    }
};

// What a press does is checked against a fake; here, which typed keys reach the handler.
TEST_F(XcbGlobalShortcutsTest, TheShortcutIsPressedWhateverTheLockKeys) {
    const Shortcut ctrlAltE{'e', ShortcutModifier::control | ShortcutModifier::alt};
    XcbGlobalShortcuts desktop;
    std::vector<Shortcut> pressed;
    desktop.setPressedHandler([&](const Shortcut& shortcut) { pressed.push_back(shortcut); });
    EXPECT_TRUE(desktop.available());
    ASSERT_EQ(desktop.registerShortcut(ctrlAltE), ShortcutRegistration::registered);

    type("ctrl+alt+e");
    EXPECT_TRUE(pumpUntil([&] { return pressed.size() == 1; }));
    // Num Lock and Caps Lock on add their bits to every press.
    type("Num_Lock Caps_Lock ctrl+alt+e");
    EXPECT_TRUE(pumpUntil([&] { return pressed.size() == 2; }));
    type("Num_Lock Caps_Lock");

    // Other keys and the shortcut's key with other modifiers don't count.
    type("ctrl+alt+r ctrl+e ctrl+alt+shift+e");
    pumpFor(200ms);
    EXPECT_EQ(pressed, std::vector<Shortcut>(2, ctrlAltE));
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
