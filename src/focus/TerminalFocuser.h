#pragma once

#include "focus/AppActivating.h"
#include "focus/ShellRunner.h"
#include "focus/TmuxHostWindow.h"
#include "focus/WindowSystem.h"
#include "sessions/AgentSession.h"

#include <utility>

namespace tovrin {

// Brings forward the terminal pane or tab a session runs in, from what its locator names.
class TerminalFocuser {
public:
    TerminalFocuser(ShellRunner& shell, WindowSystem& windows, AppActivating& activator,
                    TmuxHostWindow::ParentOf parentOf = parentProcess)
        : m_shell(shell), m_activator(activator), m_tmuxHost(shell, windows, std::move(parentOf)) {}

    // True when the session ran in a terminal and nothing else is to be tried; false when the
    // caller should go on with other attempts.
    bool focus(const AgentSession& session);

private:
    ShellRunner& m_shell;
    AppActivating& m_activator;
    TmuxHostWindow m_tmuxHost;
};

} // namespace tovrin
