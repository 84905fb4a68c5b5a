#include "focus/TerminalFocuser.h"

#include "support/FakeFocusPorts.h"
#include "support/FakeWindowSystem.h"

#include <gtest/gtest.h>

namespace tovrin {
namespace {

struct TerminalCase {
    const char* what;
    std::optional<Locator> locator;
    bool installed = true; // tmux and wezterm under /usr/bin
    std::optional<std::string> clients;
    bool expected = false;
    std::vector<std::string> log;
    std::vector<std::uint64_t> activated;
};

Locator locator(std::function<void(Locator&)> fill) {
    Locator value;
    fill(value);
    return value;
}

TEST(TerminalFocuserTest, TheFirstAttemptThatAppliesDecides) {
    const std::string selectPane = "start /usr/bin/tmux select-pane -t %3";
    const std::string selectWindow = "start /usr/bin/tmux select-window -t %3";
    const std::string listClients = "/usr/bin/tmux list-clients -t %3 -F #{client_activity} #{client_pid}";
    const std::vector<TerminalCase> cases{
        {"no locator", std::nullopt, true, "1 50", false, {}, {}},
        {"tmux wins and its app comes forward",
         locator([](Locator& l) {
             l.tmuxPane = "%3";
             l.itermSession = "w0t0p0:X";
             l.weztermPane = "7";
             l.app = "SomeApp";
         }),
         true,
         "1 50",
         true,
         {selectPane, selectWindow, "activate SomeApp"},
         {}},
        {"a missing tmux still closes the matter when the app is known",
         locator([](Locator& l) {
             l.tmuxPane = "%3";
             l.app = "SomeApp";
         }),
         false,
         std::nullopt,
         true,
         {"activate SomeApp"},
         {}},
        {"tmux without app raises the terminal of its client",
         locator([](Locator& l) { l.tmuxPane = "%3"; }),
         true,
         "1 50",
         true,
         {selectPane, selectWindow, "read " + listClients},
         {10}},
        {"an empty app is no app",
         locator([](Locator& l) {
             l.tmuxPane = "%3";
             l.app = "";
         }),
         true,
         "1 50",
         true,
         {selectPane, selectWindow, "read " + listClients},
         {10}},
        {"no client to follow lets the caller go on",
         locator([](Locator& l) { l.tmuxPane = "%3"; }),
         true,
         "",
         false,
         {selectPane, selectWindow, "read " + listClients},
         {}},
        {"an empty tmux pane counts as absent",
         locator([](Locator& l) {
             l.tmuxPane = "";
             l.weztermPane = "7";
         }),
         true,
         std::nullopt,
         true,
         {"start /usr/bin/wezterm cli activate-pane --pane-id 7", "activate WezTerm"},
         {}},
        {"a missing wezterm still closes the matter",
         locator([](Locator& l) { l.weztermPane = "7"; }),
         false,
         std::nullopt,
         true,
         {"activate WezTerm"},
         {}},
        {"an iTerm session, a device or the terminal program alone lead nowhere",
         locator([](Locator& l) {
             l.itermSession = "w0t1p0:ABCD";
             l.app = "Terminal";
             l.tty = "/dev/pts/2";
             l.termProgram = "WezTerm";
         }),
         true,
         std::nullopt,
         false,
         {},
         {}},
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
        EXPECT_EQ(windows.activated, c.activated);
    }
}

} // namespace
} // namespace tovrin
