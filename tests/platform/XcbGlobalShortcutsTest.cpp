#include "platform/x11/XcbGlobalShortcuts.h"

#include "support/ChildProcesses.h"
#include "support/QtEventLoopTest.h"
#include "support/ShellCommand.h"
#include "support/XcbTestClient.h"

#include <chrono>
#include <csignal>
#include <cstdlib>
#include <filesystem>
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

    static void type(const std::string& keys, const std::string& display = "") {
        const std::string onDisplay = display.empty() ? "" : "DISPLAY=" + display + " ";
        ASSERT_EQ(std::system((onDisplay + "xdotool key " + keys).c_str()), 0) << keys;
    }
};

// An X server of the test's own, to take away under a live grab and bring back.
class RestartableXServer {
public:
    RestartableXServer() {
        while (std::filesystem::exists("/tmp/.X11-unix/X" + std::to_string(m_number)) ||
               std::filesystem::exists("/tmp/.X" + std::to_string(m_number) + "-lock"))
            ++m_number;
    }
    ~RestartableXServer() { stop(); }

    std::string display() const { return ":" + std::to_string(m_number); }

    bool start() {
        m_pid = test::spawnQuietly({"Xvfb", display(), "-nolisten", "tcp", "-screen", "0", "640x480x24"});
        const std::string socket = "/tmp/.X11-unix/X" + std::to_string(m_number);
        return m_pid > 0 && test::pollUntil([&] { return std::filesystem::exists(socket); });
    }

    void stop() {
        if (m_pid <= 0) return;
        ::kill(m_pid, SIGTERM);
        test::exitStatusOf(m_pid);
        m_pid = -1;
    }

private:
    int m_number = 90 + ::getpid() % 100;
    pid_t m_pid = -1;
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

TEST_F(XcbGlobalShortcutsTest, AServerThatComesBackGetsTheShortcutAgain) {
    if (!test::haveProgram("Xvfb")) GTEST_SKIP() << "Xvfb not found";
    const Shortcut ctrlAltE{'e', ShortcutModifier::control | ShortcutModifier::alt};
    RestartableXServer server;
    ASSERT_TRUE(server.start());
    XcbGlobalShortcuts desktop(server.display());
    int pressed = 0;
    desktop.setPressedHandler([&](const Shortcut&) { ++pressed; });
    ASSERT_EQ(desktop.registerShortcut(ctrlAltE), ShortcutRegistration::registered);

    // The broken connection is noticed on its own, while nothing is asked of it.
    server.stop();
    pumpFor(300ms);
    EXPECT_FALSE(desktop.available());

    ASSERT_TRUE(server.start());
    ASSERT_TRUE(desktop.available());
    type("ctrl+alt+e", server.display());
    EXPECT_TRUE(pumpUntil([&] { return pressed == 1; })) << "the grab is made again on the new connection";
}

} // namespace
} // namespace tovrin
