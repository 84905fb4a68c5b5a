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

    // A missing tmux or wezterm still closes the matter when the application is known: the pane
    // ids say it is a terminal session, and no editor or folder would be the right window.
    if (given(locator.tmuxPane)) {
        m_shell.run("tmux", {"select-pane", "-t", *locator.tmuxPane});
        m_shell.run("tmux", {"select-window", "-t", *locator.tmuxPane});
        if (given(locator.app)) {
            m_activator.activate(*locator.app);
            return true;
        }
        return m_tmuxHost.raise(*locator.tmuxPane);
    }
    if (given(locator.weztermPane)) {
        m_shell.run("wezterm", {"cli", "activate-pane", "--pane-id", *locator.weztermPane});
        m_activator.activate("WezTerm");
        return true;
    }
    return false;
}

} // namespace tovrin
