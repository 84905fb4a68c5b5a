#pragma once

#include "focus/AppActivating.h"
#include "focus/ShellRunner.h"
#include "focus/SshClients.h"
#include "focus/TmuxHostWindow.h"
#include "focus/WindowSystem.h"
#include "sessions/AgentSession.h"

#include <functional>
#include <utility>

namespace tovrin {

// Brings forward the terminal pane or tab a session runs in, from what its locator names. For a
// session on a remote host: its tmux pane chosen there over ssh, then the local terminal that runs
// an ssh to that host.
class TerminalFocuser {
public:
    using SshClientsOf = std::function<std::vector<std::int64_t>(const std::string& destination)>;

    TerminalFocuser(ShellRunner& shell, WindowSystem& windows, AppActivating& activator,
                    TmuxHostWindow::ParentOf parentOf = parentProcess, SshClientsOf sshClients = sshClientsTo)
        : m_shell(shell), m_activator(activator), m_tmuxHost(shell, windows, std::move(parentOf)),
          m_sshClients(std::move(sshClients)) {}

    // True when the session ran in a terminal and nothing else is to be tried; false when the
    // caller should go on with other attempts.
    bool focus(const AgentSession& session);

private:
    bool focusRemote(const std::string& host, const std::optional<std::string>& tmuxPane);

    ShellRunner& m_shell;
    AppActivating& m_activator;
    TmuxHostWindow m_tmuxHost;
    SshClientsOf m_sshClients;
};

} // namespace tovrin
