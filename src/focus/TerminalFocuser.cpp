#include "focus/TerminalFocuser.h"

#include "hooks/HookTemplateRenderer.h"
#include "sessions/SshCommand.h"

namespace tovrin {
namespace {

bool given(const std::optional<std::string>& value) {
    return value && !value->empty();
}

} // namespace

bool TerminalFocuser::focus(const AgentSession& session) {
    if (session.host)
        return focusRemote(*session.host, session.locator ? session.locator->tmuxPane : std::nullopt);
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

// Always the end of the matter: this machine's editors, applications and folders are not where a
// remote session runs.
bool TerminalFocuser::focusRemote(const std::string& host, const std::optional<std::string>& tmuxPane) {
    if (sshDestinationProblem(host)) return true;
    if (given(tmuxPane)) {
        // The pane id comes from the host's own file: quoted, it can only name a pane there.
        const std::string pane = HookTemplateRenderer::shellQuoted(*tmuxPane);
        const auto ssh = SshCommand::fromEnvironment();
        m_shell.run(ssh.program,
                    ssh.remoteCommand(host, "tmux select-pane -t " + pane + " \\; select-window -t " + pane));
    }
    m_tmuxHost.raiseWindowOfAny(m_sshClients(host));
    return true;
}

} // namespace tovrin
