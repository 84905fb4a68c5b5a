#pragma once

#include "sessions/AgentSession.h"

#include <vector>

namespace tovrin {

// The source of decoded status files. Never fails: what cannot be read is left out.
class SessionReading {
public:
    virtual ~SessionReading() = default;
    virtual std::vector<AgentSession> readAll() = 0;
};

} // namespace tovrin
