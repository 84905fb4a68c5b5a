#include "focus/TerminalFocuser.h"

#include "support/FakeFocusPorts.h"

#include <gtest/gtest.h>

namespace tovrin {
namespace {

struct TerminalCase {
    const char* what;
    std::optional<Locator> locator;
    bool installed = true; // tmux and wezterm under /usr/bin
    bool scriptsSucceed = false;
    bool expected = false;
    std::vector<std::string> log;
};

Locator locator(std::function<void(Locator&)> fill) {
    Locator value;
    fill(value);
    return value;
}

TEST(TerminalFocuserTest, TheFirstAttemptThatAppliesDecides) {
    const std::string selectPane = "start /usr/bin/tmux select-pane -t %3";
    const std::string selectWindow = "start /usr/bin/tmux select-window -t %3";
    const std::vector<TerminalCase> cases{
        {"no locator", std::nullopt, true, true, false, {}},
        {"tmux wins over iTerm",
         locator([](Locator& l) {
             l.tmuxPane = "%3";
             l.itermSession = "w0t0p0:X";
             l.app = "SomeApp";
         }),
         true,
         true,
         true,
         {selectPane, selectWindow, "activate SomeApp"}},
        {"tmux without app activates iTerm",
         locator([](Locator& l) { l.tmuxPane = "%3"; }),
         true,
         false,
         true,
         {selectPane, selectWindow, "activate iTerm"}},
        {"tmux with an empty app activates it as it is",
         locator([](Locator& l) {
             l.tmuxPane = "%3";
             l.app = "";
         }),
         true,
         false,
         true,
         {selectPane, selectWindow, "activate "}},
        {"a missing tmux still closes the matter",
         locator([](Locator& l) {
             l.tmuxPane = "%3";
             l.app = "SomeApp";
         }),
         false,
         false,
         true,
         {"activate SomeApp"}},
        {"an empty tmux pane counts as absent",
         locator([](Locator& l) {
             l.tmuxPane = "";
             l.weztermPane = "7";
         }),
         true,
         false,
         true,
         {"start /usr/bin/wezterm cli activate-pane --pane-id 7", "activate WezTerm"}},
        {"a missing wezterm still closes the matter",
         locator([](Locator& l) { l.weztermPane = "7"; }),
         false,
         false,
         true,
         {"activate WezTerm"}},
        {"iTerm beats wezterm; a failing script lets the caller go on",
         locator([](Locator& l) {
             l.itermSession = "w0t1p0:ABCD";
             l.weztermPane = "7";
         }),
         true,
         false,
         false,
         {R"(script if (id of aSession) is "ABCD" then)"}},
        {"a working iTerm script closes the matter",
         locator([](Locator& l) { l.itermSession = "ABCD"; }),
         true,
         true,
         true,
         {R"(script if (id of aSession) is "ABCD" then)"}},
        {"Terminal with a device",
         locator([](Locator& l) {
             l.app = "Terminal";
             l.tty = "/dev/ttys001";
         }),
         true,
         false,
         false,
         {R"(script if tty of aTab is "/dev/ttys001" then)"}},
        {"Terminal with a device, script works",
         locator([](Locator& l) {
             l.app = "Terminal";
             l.tty = "/dev/ttys001";
         }),
         true,
         true,
         true,
         {R"(script if tty of aTab is "/dev/ttys001" then)"}},
        {"Terminal without a device", locator([](Locator& l) { l.app = "Terminal"; }), true, true, false, {}},
        {"a device of another app",
         locator([](Locator& l) {
             l.app = "SomeApp";
             l.tty = "/dev/pts/2";
         }),
         true,
         true,
         false,
         {}},
        {"the terminal program alone says nothing",
         locator([](Locator& l) { l.termProgram = "WezTerm"; }),
         true,
         true,
         false,
         {}},
    };
    for (const TerminalCase& c : cases) {
        SCOPED_TRACE(c.what);
        test::FocusLog log;
        test::FakeProcessRunner processes(log);
        test::RecordingShell shell(processes, log,
                                   c.installed ? std::set<std::string>{"/usr/bin/tmux", "/usr/bin/wezterm"}
                                               : std::set<std::string>{});
        shell.scriptsSucceed = c.scriptsSucceed;
        test::FakeAppActivator activator(log);
        AgentSession session;
        session.locator = c.locator;

        EXPECT_EQ(TerminalFocuser(shell, activator).focus(session), c.expected);
        EXPECT_EQ(log.entries(), c.log);
    }
}

} // namespace
} // namespace tovrin
