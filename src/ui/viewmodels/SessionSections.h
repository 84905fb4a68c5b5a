#pragma once

#include "sessions/AgentSession.h"

#include <vector>

namespace tovrin {

// A session list split by state, each part in the list's own order.
struct SessionSections {
    std::vector<AgentSession> waiting;
    std::vector<AgentSession> working;
    std::vector<AgentSession> idle;

    static SessionSections of(const std::vector<AgentSession>& sessions) {
        SessionSections sections;
        for (const auto& s : sessions) {
            switch (s.state) {
            case SessionState::waiting:
                sections.waiting.push_back(s);
                break;
            case SessionState::working:
                sections.working.push_back(s);
                break;
            case SessionState::idle:
                sections.idle.push_back(s);
                break;
            }
        }
        return sections;
    }

    bool empty() const { return waiting.empty() && working.empty() && idle.empty(); }
};

} // namespace tovrin
