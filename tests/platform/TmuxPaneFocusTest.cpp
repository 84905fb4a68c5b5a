#include "focus/TerminalFocuser.h"
#include "platform/linux/PosixProcessRunner.h"
#include "support/FakeFocusPorts.h"
#include "support/FakeWindowSystem.h"
#include "support/PollUntil.h"
#include "support/ScopedEnv.h"
#include "support/ShellCommand.h"
#include "support/TempDir.h"

#include <cstdlib>
#include <gtest/gtest.h>
#include <unistd.h>

namespace tovrin {
namespace {

std::string output(const std::string& command) {
    return test::runCommand(command).out;
}

// A tmux server of the test's own: the default socket lives under TMUX_TMPDIR, and TMUX is cleared
// so neither the product's plain `tmux` nor the test's reach a server of the user.
class TmuxPaneFocusTest : public ::testing::Test {
protected:
    void SetUp() override {
        if (!test::haveProgram("tmux")) GTEST_SKIP() << "tmux is not installed";
        if (const char* outer = std::getenv("TMUX")) m_outerTmux = outer;
        ::unsetenv("TMUX");
        ASSERT_EQ(std::system("tmux new-session -d -s focus -x 80 -y 24 && tmux split-window -t focus:0 && "
                              "tmux new-window -t focus"),
                  0);
    }
    void TearDown() override {
        std::system("tmux kill-server >/dev/null 2>&1");
        if (m_outerTmux) ::setenv("TMUX", m_outerTmux->c_str(), 1);
    }

    std::string current() { return output("tmux display -p -t focus: '#{window_index} #{pane_id}'"); }

    test::TempDir socketDir;
    test::ScopedEnv privateSocket{"TMUX_TMPDIR", socketDir.path().string()};
    std::optional<std::string> m_outerTmux;
};

TEST_F(TmuxPaneFocusTest, SelectsThePaneAndRaisesTheWindowOfItsClientsTerminal) {
    PosixProcessRunner processes;
    ShellRunner shell(processes);
    const std::optional<std::string> script = shell.resolve("script");
    if (!script) GTEST_SKIP() << "script is not installed";
    // Window 0 holds two panes, the second active; window 1, made last, is the current one.
    const std::string firstPane = output("tmux list-panes -t focus:0 -F '#{pane_id}' | head -n 1");
    ASSERT_FALSE(firstPane.empty());
    ASSERT_NE(current(), "0 " + firstPane);

    // A client on a terminal of its own whose ancestor is this process, which stands for the
    // terminal emulator owning a window; the nearest such ancestor wins.
    ASSERT_TRUE(processes.start(*script, {"-qc", "tmux attach -t focus", "/dev/null"}));
    ASSERT_TRUE(test::pollUntil([] { return !output("tmux list-clients -t focus").empty(); }))
        << "the client did not attach";

    test::FocusLog log;
    test::FakeWindowSystem windows;
    windows.windows = {{7, "", "outer", "Outer", ::getppid()}, {8, "", "term", "Term", ::getpid()}};
    test::FakeAppActivator activator(log);
    AgentSession session;
    session.locator = Locator{};
    session.locator->tmuxPane = firstPane;

    EXPECT_TRUE(TerminalFocuser(shell, windows, activator).focus(session));
    EXPECT_EQ(windows.activated, std::vector<std::uint64_t>{8});

    EXPECT_TRUE(test::pollUntil([&] { return current() == "0 " + firstPane; })) << current();
    EXPECT_EQ(log.entries(), std::vector<std::string>{});
}

} // namespace
} // namespace tovrin
