#pragma once

#include "sessions/AgentSession.h"
#include "sessions/ProcessLiveness.h"

#include <optional>
#include <string>
#include <vector>

namespace tovrin {

// A remote host out of reach, and why in the words of ssh or of the stream.
struct UnreachableHost {
    std::string host;
    std::string problem;

    bool operator==(const UnreachableHost&) const = default;
};

// The source of decoded status files. Never fails: what cannot be read is left out.
class SessionReading {
public:
    virtual ~SessionReading() = default;
    virtual std::vector<AgentSession> readAll() = 0;

    // Whether the session's agent still runs, as the machine it runs on tells; nothing when that
    // can't be told (no pid, or its host out of reach), and the session then leaves by its age.
    virtual std::optional<bool> processAlive(const AgentSession& session) const {
        if (!session.pid) return std::nullopt;
        return processExists(*session.pid);
    }

    // The remote hosts whose sessions can't be had just now; this machine's folder is never one.
    virtual std::vector<UnreachableHost> unreachableHosts() const { return {}; }
};

} // namespace tovrin
