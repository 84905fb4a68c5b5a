#include "platform/x11/XcbWindowSystem.h"

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
    EXPECT_EQ(std::ranges::find(windows, dialog, &WindowInfo::id), windows.end()) << "dialogs are not listed";
}

// Which window the focus logic picks is checked against a fake; here, that the window manager obeys.
TEST_F(XcbWindowSystemTest, ActivateBringsTheWindowForwardAndAnswersFalseForNoWindow) {
    const auto konsole = openWindow("konsole", "konsole", "~ : bash");
    const auto xterm = openWindow("xterm", "XTerm", "xterm");
    EXPECT_TRUE(m_windows.activate(konsole));
    EXPECT_TRUE(test::pollUntil([&] { return m_x.activeWindow() == konsole; }));
    EXPECT_TRUE(m_windows.activate(xterm));
    EXPECT_TRUE(test::pollUntil([&] { return m_x.activeWindow() == xterm; }));
    EXPECT_FALSE(m_windows.activate(0));
    EXPECT_FALSE(m_windows.activate(std::uint64_t{1} << 40));
}

TEST(XcbWindowSystemWithoutServerTest, AnswersNone) {
    XcbWindowSystem windows(":4242"); // no server there
    EXPECT_FALSE(windows.available());
    EXPECT_TRUE(windows.normalWindows().empty());
    EXPECT_FALSE(windows.activate(1));
}

} // namespace
} // namespace tovrin
