#include "platform/x11/XcbWindowSystem.h"

#include "focus/AppActivator.h"
#include "focus/EditorWindowRaiser.h"
#include "support/FakeFocusPorts.h"
#include "support/XcbTestClient.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <gtest/gtest.h>
#include <unistd.h>
#include <xcb/xcb.h>

namespace tovrin {
namespace {

// Real windows on a private X server managed by openbox (see run-x11-tests.sh), made by the
// test's own connection so that their class, title and type are exactly what the case needs.
class XcbWindowSystemTest : public ::testing::Test {
protected:
    void SetUp() override {
        if (!test::XcbTestClient::onPrivateDisplay())
            GTEST_SKIP() << "needs the private X server of run-x11-tests.sh";
        ASSERT_TRUE(m_x.connected());
        ASSERT_TRUE(test::pollUntil([&] { return m_x.windowManagerRuns(); })) << "no window manager came up";
    }

    bool listed(std::uint32_t id) {
        const auto windows = m_windows.normalWindows();
        return std::ranges::any_of(windows, [&](const WindowInfo& w) { return w.id == id; });
    }

    // A mapped top-level window; waits until the window manager has taken it on, and focused it
    // if it is a normal one.
    std::uint32_t openWindow(const std::string& instance, const std::string& className,
                             const std::string& title, const char* type = "_NET_WM_WINDOW_TYPE_NORMAL") {
        const xcb_window_t w = m_x.openWindow(type, 200, 100, instance + '\0' + className + '\0', title);
        EXPECT_TRUE(m_x.managed(w)) << title << " never managed";
        if (std::strcmp(type, "_NET_WM_WINDOW_TYPE_NORMAL") == 0) {
            EXPECT_TRUE(test::pollUntil([&] { return m_x.activeWindow() == w; }))
                << title << " never became active";
        }
        return w;
    }

    test::XcbTestClient m_x;
    XcbWindowSystem m_windows;
    const std::string m_home = "/home/tester";
};

TEST_F(XcbWindowSystemTest, ListsNormalWindowsWithTheirClassTitleAndPid) {
    const auto normal = openWindow("alpha-inst", "Alpha", "readme.md \u2014 \u00e4lpha");
    const auto dialog = openWindow("ask", "Asker", "Question", "_NET_WM_WINDOW_TYPE_DIALOG");
    ASSERT_TRUE(m_windows.available());
    const auto windows = m_windows.normalWindows();
    const auto found = std::ranges::find(windows, normal, &WindowInfo::id);
    ASSERT_NE(found, windows.end());
    EXPECT_EQ(found->classInstance, "alpha-inst");
    EXPECT_EQ(found->className, "Alpha");
    EXPECT_EQ(found->title, "readme.md \u2014 \u00e4lpha");
    EXPECT_EQ(found->pid, ::getpid());
    EXPECT_FALSE(listed(dialog));
}

TEST_F(XcbWindowSystemTest, AppActivatorBringsTheNamedApplicationForward) {
    const auto konsole = openWindow("konsole", "konsole", "~ : bash");
    const auto xterm = openWindow("xterm", "XTerm", "xterm");
    test::FocusLog log;
    test::FakeProcessRunner runner(log);
    test::RecordingShell shell(runner, log, {});
    AppActivator activator(m_windows, shell, {});

    activator.activate("Konsole");
    EXPECT_TRUE(test::pollUntil([&] { return m_x.activeWindow() == konsole; }));
    activator.activate("XTerm");
    EXPECT_TRUE(test::pollUntil([&] { return m_x.activeWindow() == xterm; }));
    EXPECT_TRUE(log.entries().empty());
}

TEST_F(XcbWindowSystemTest, RaiseWindowActivatesTheEditorWindowOfTheFolder) {
    const auto alpha = openWindow("code", "Code", "a.ts - alpha - Visual Studio Code");
    const auto beta = openWindow("code", "Code", "b.ts - beta - Visual Studio Code");
    const auto browser = openWindow("Navigator", "firefox", "alpha \u2014 Mozilla Firefox");
    EditorWindowRaiser raiser(m_windows, m_home);
    const Editor vscode{"vscode", "Visual Studio Code"};

    EXPECT_TRUE(raiser.raiseWindow(vscode, m_home + "/alpha/src"));
    EXPECT_TRUE(test::pollUntil([&] { return m_x.activeWindow() == alpha; }));
    EXPECT_TRUE(raiser.raiseWindow(vscode, m_home + "/beta"));
    EXPECT_TRUE(test::pollUntil([&] { return m_x.activeWindow() == beta; }));
    EXPECT_FALSE(raiser.raiseWindow(vscode, m_home + "/gamma"));
    EXPECT_EQ(m_x.activeWindow(), beta);
    EXPECT_NE(browser, beta);
}

TEST(XcbWindowSystemWithoutServerTest, AnswersNoneAndRaisesNothing) {
    XcbWindowSystem windows(":4242"); // no server there
    EXPECT_FALSE(windows.available());
    EXPECT_TRUE(windows.normalWindows().empty());
    EXPECT_FALSE(windows.activate(1));
    EditorWindowRaiser raiser(windows, "/home/tester");
    EXPECT_FALSE(raiser.raiseWindow({"vscode", "Visual Studio Code"}, "/home/tester/proj"));
}

} // namespace
} // namespace tovrin
