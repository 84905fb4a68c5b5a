#pragma once

#include "sessions/AgentSession.h"

namespace tovrin {

// Brings a session's terminal pane or editor window forward. Both calls return at once;
// the work runs on the focus queue.
class SessionFocusing {
public:
    virtual ~SessionFocusing() = default;
    virtual void focus(const AgentSession& session) = 0;
    // Shows the session's project folder in the file manager.
    virtual void revealInFileManager(const AgentSession& session) = 0;
};

} // namespace tovrin
