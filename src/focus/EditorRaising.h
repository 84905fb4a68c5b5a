#pragma once

#include "sessions/AgentSession.h"

#include <optional>
#include <string>

namespace tovrin {

// An editor known to the raiser.
struct Editor {
    std::string id;             // "cursor", "vscode", "antigravity"
    std::string activationName; // what to activate when no window of it could be raised

    bool operator==(const Editor&) const = default;
};

// Raises the editor window that shows a session's project.
class EditorRaising {
public:
    virtual ~EditorRaising() = default;
    // The editor the session runs in, if any.
    virtual std::optional<Editor> editor(const AgentSession& session) const = 0;
    // True when a window whose title names a folder on the way up from cwd was raised.
    virtual bool raiseWindow(const Editor& editor, const std::string& cwd) = 0;
};

} // namespace tovrin
