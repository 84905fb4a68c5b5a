#pragma once

#include "sessions/RemoteHostLinking.h"

#include <utility>

namespace tovrin::test {

// A link whose state and snapshot the test sets; each change is announced as the real one does.
class FakeRemoteHostLink final : public RemoteHostLinking {
public:
    void start(std::function<void()> onChange) override { m_onChange = std::move(onChange); }
    State state() const override { return m_state; }
    std::string problem() const override { return m_problem; }
    const RemoteSnapshot& snapshot() const override { return m_snapshot; }

    void deliver(RemoteSnapshot snapshot) {
        m_state = State::connected;
        m_problem.clear();
        m_snapshot = std::move(snapshot);
        announce();
    }
    void lose(std::string problem) {
        m_state = State::unreachable;
        m_problem = std::move(problem);
        announce();
    }

private:
    void announce() {
        if (m_onChange) m_onChange();
    }

    State m_state = State::connecting;
    std::string m_problem;
    RemoteSnapshot m_snapshot;
    std::function<void()> m_onChange;
};

} // namespace tovrin::test
