#include "focus/TerminalFocuser.h"

#include "support/FakeFocusPorts.h"
#include "support/FakeWindowSystem.h"

#include <gtest/gtest.h>

// Locators name only the fields a case sets; the others are meant to stay empty.
#pragma GCC diagnostic ignored "-Wmissing-field-initializers"

namespace tovrin {
namespace {

using Log = std::vector<std::string>;

struct TerminalCase {
    const char* what;
    std::optional<Locator> locator;
    bool installed; // tmux and wezterm under /usr/bin
    std::optional<std::string> clients;
    bool expected;
    std::uint64_t raised; // the terminal window brought forward, 0 for none
    Log log;
};

TEST(TerminalFocuserTest, TheFirstAttemptThatAppliesDecides) {
    const std::string selectPane = "start /usr/bin/tmux select-pane -t %3";
    const std::string selectWindow = "start /usr/bin/tmux select-window -t %3";
    const std::string listClients = "/usr/bin/tmux list-clients -t %3 -F #{client_activity} #{client_pid}";
    const Log none, someApp{"activate SomeApp"}, tmuxThenApp{selectPane, selectWindow, "activate SomeApp"},
        tmuxThenClients{selectPane, selectWindow, "read " + listClients}, wezTerm{"activate WezTerm"},
        weztermPane{"start /usr/bin/wezterm cli activate-pane --pane-id 7", "activate WezTerm"};
    const std::vector<TerminalCase> cases{
        {"no locator", std::nullopt, true, "1 50", false, 0, none},
        {"tmux wins and its app comes forward",
         Locator{.tmuxPane = "%3", .itermSession = "w0t0p0:X", .weztermPane = "7", .app = "SomeApp"}, true,
         "1 50", true, 0, tmuxThenApp},
        {"a missing tmux still closes the matter when the app is known",
         Locator{.tmuxPane = "%3", .app = "SomeApp"}, false, std::nullopt, true, 0, someApp},
        {"tmux without app raises the terminal of its client", Locator{.tmuxPane = "%3"}, true, "1 50", true,
         10, tmuxThenClients},
        {"an empty app is no app", Locator{.tmuxPane = "%3", .app = ""}, true, "1 50", true, 10,
         tmuxThenClients},
        {"no client to follow lets the caller go on", Locator{.tmuxPane = "%3"}, true, "", false, 0,
         tmuxThenClients},
        {"an empty tmux pane counts as absent", Locator{.tmuxPane = "", .weztermPane = "7"}, true,
         std::nullopt, true, 0, weztermPane},
        {"a missing wezterm still closes the matter", Locator{.weztermPane = "7"}, false, std::nullopt, true,
         0, wezTerm},
        {"an iTerm session, a device or the terminal program alone lead nowhere",
         Locator{
             .termProgram = "WezTerm", .itermSession = "w0t1p0:ABCD", .tty = "/dev/pts/2", .app = "Terminal"},
         true, std::nullopt, false, 0, none},
    };
    for (const TerminalCase& c : cases) {
        SCOPED_TRACE(c.what);
        test::FocusLog log;
        test::FakeProcessRunner processes(log);
        if (c.clients) processes.outputs[listClients] = *c.clients;
        test::RecordingShell shell(processes, log,
                                   c.installed ? std::set<std::string>{"/usr/bin/tmux", "/usr/bin/wezterm"}
                                               : std::set<std::string>{});
        test::FakeWindowSystem windows;
        windows.windows = {{10, "~", "konsole", "konsole", 40}};
        test::FakeAppActivator activator(log);
        AgentSession session;
        session.locator = c.locator;

        TerminalFocuser focuser(shell, windows, activator, [](std::int64_t pid) {
            return pid == 50 ? std::optional<std::int64_t>(40) : std::nullopt;
        });
        EXPECT_EQ(focuser.focus(session), c.expected);
        EXPECT_EQ(log.entries(), c.log);
        EXPECT_EQ(windows.activated, c.raised ? std::vector{c.raised} : std::vector<std::uint64_t>{});
    }
}

TEST(TerminalFocuserTest, ARemotePaneIsChosenOverSshAndTheTerminalRunningSshToItsHostRaised) {
    test::FocusLog log;
    test::FakeProcessRunner processes(log);
    test::RecordingShell shell(processes, log, {"/usr/bin/ssh", "/usr/bin/tmux"});
    test::FakeWindowSystem windows;
    windows.windows = {{10, "~", "konsole", "konsole", 40}};
    test::FakeAppActivator activator(log);
    std::vector<std::string> askedFor;
    TerminalFocuser focuser(
        shell, windows, activator,
        [](std::int64_t pid) { return pid == 60 ? std::optional<std::int64_t>(40) : std::nullopt; },
        [&](const std::string& host) {
            askedFor.push_back(host);
            return std::vector<std::int64_t>{60};
        });
    AgentSession session;
    session.host = "dev@build";
    // A pane id from the host's file is one quoted word there, whatever it holds.
    session.locator = Locator{.tmuxPane = "%3'; touch x", .app = "SomeApp"};

    EXPECT_TRUE(focuser.focus(session));
    EXPECT_EQ(log.entries(),
              Log{"start /usr/bin/ssh -T -o BatchMode=yes -o ConnectTimeout=10 dev@build "
                  "tmux select-pane -t '%3'\\''; touch x' \\; select-window -t '%3'\\''; touch x'"});
    EXPECT_EQ(askedFor, std::vector<std::string>{"dev@build"});
    EXPECT_EQ(windows.activated, std::vector<std::uint64_t>{10});

    // Without a pane, or with nothing local to raise, it still ends there: no local app or folder.
    session.locator.reset();
    windows.activated.clear();
    EXPECT_TRUE(focuser.focus(session));
    EXPECT_EQ(log.entries().size(), 1u) << "no second ssh";
    EXPECT_EQ(windows.activated, std::vector<std::uint64_t>{10});
}

} // namespace
} // namespace tovrin
