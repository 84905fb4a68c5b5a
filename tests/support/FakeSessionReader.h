#pragma once

#include "sessions/SessionReading.h"

#include <utility>
#include <vector>

namespace tovrin::test {

// Hands out whatever list the test last set, and counts the readings, so that a test can tell
// whether a pass ran.
class FakeSessionReader final : public SessionReading {
public:
    void set(std::vector<AgentSession> sessions) { m_sessions = std::move(sessions); }
    std::vector<AgentSession> readAll() override {
        ++m_calls;
        return m_sessions;
    }
    int calls() const { return m_calls; }

private:
    std::vector<AgentSession> m_sessions;
    int m_calls = 0;
};

} // namespace tovrin::test
