#include "focus/TerminalFocuser.h"

namespace tovrin {
namespace {

bool given(const std::optional<std::string>& value) {
    return value && !value->empty();
}

} // namespace

bool TerminalFocuser::focus(const AgentSession& session) {
    if (!session.locator) return false;
    const Locator& locator = *session.locator;

    // A missing tmux or wezterm still closes the matter: the pane ids say it is a terminal
    // session, and no editor or folder would be the right window.
    if (given(locator.tmuxPane)) {
        m_shell.run("tmux", {"select-pane", "-t", *locator.tmuxPane});
        m_shell.run("tmux", {"select-window", "-t", *locator.tmuxPane});
        m_activator.activate(locator.app ? *locator.app : std::string("iTerm"));
        return true;
    }
    if (given(locator.itermSession)) return m_shell.appleScript(iTermScript(*locator.itermSession));
    if (given(locator.weztermPane)) {
        m_shell.run("wezterm", {"cli", "activate-pane", "--pane-id", *locator.weztermPane});
        m_activator.activate("WezTerm");
        return true;
    }
    if (locator.app == "Terminal" && given(locator.tty))
        return m_shell.appleScript(terminalScript(*locator.tty));
    return false;
}

} // namespace tovrin
