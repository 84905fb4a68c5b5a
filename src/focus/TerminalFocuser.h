#pragma once

#include "focus/AppActivating.h"
#include "focus/ShellRunner.h"
#include "sessions/AgentSession.h"

namespace tovrin {

// Brings forward the terminal pane or tab a session runs in, from what its locator names.
class TerminalFocuser {
public:
    TerminalFocuser(ShellRunner& shell, AppActivating& activator) : m_shell(shell), m_activator(activator) {}

    // True when the session ran in a terminal and nothing else is to be tried; false when the
    // caller should go on with other attempts.
    bool focus(const AgentSession& session);

private:
    ShellRunner& m_shell;
    AppActivating& m_activator;
};

} // namespace tovrin
