#pragma once

#include "sessions/AgentSession.h"

#include <vector>

namespace tovrin {

// The roll-up of a list of sessions.
struct AggregateStatus {
    enum class Kind { waiting, working, neutral };

    Kind kind = Kind::neutral;
    long count = 0; // the number of waiting sessions; 0 for the other kinds

    static AggregateStatus waiting(long n) { return {Kind::waiting, n}; }
    static AggregateStatus working() { return {Kind::working, 0}; }
    static AggregateStatus neutral() { return {Kind::neutral, 0}; }

    static AggregateStatus from(const std::vector<AgentSession>& sessions) {
        long waitingCount = 0;
        bool anyWorking = false;
        for (const auto& s : sessions) {
            waitingCount += s.state == SessionState::waiting;
            anyWorking = anyWorking || s.state == SessionState::working;
        }
        if (waitingCount > 0) return waiting(waitingCount);
        return anyWorking ? working() : neutral();
    }

    bool operator==(const AggregateStatus&) const = default;
};

} // namespace tovrin
