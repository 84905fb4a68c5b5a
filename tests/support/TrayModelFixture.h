#pragma once

#include "core/PreferencesStore.h"
#include "sessions/SessionStore.h"
#include "support/FakeAlertPorts.h"
#include "support/FakeSessionReader.h"
#include "support/ManualLoop.h"
#include "support/MemoryDefaultsStore.h"
#include "support/SampleSessions.h"
#include "support/SettleEvents.h"
#include "ui/viewmodels/TrayViewModel.h"

#include <chrono>
#include <string>
#include <vector>

namespace tovrin::test {

// The real menu-bar model over a real session store whose reader the test fills, so that views see
// changes in the order the application delivers them. Sessions are stamped against the wall clock,
// which is what the rows' ages are measured from.
class TrayModelFixture {
    // Declared first: the preferences read it as they are built.
    MemoryDefaultsStore m_ownDefaults;

public:
    TrayModelFixture() : preferences(m_ownDefaults) {}
    // Over settings the test keeps, e.g. a file that outlives this fixture as it would a restart.
    explicit TrayModelFixture(DefaultsStore& defaults) : preferences(defaults) {}

    AgentSession make(const std::string& tool, const std::string& id, SessionState state,
                      double secondsAgo = 0) const {
        return session(tool, id, state, addSeconds(std::chrono::system_clock::now(), -secondsAgo));
    }
    // As a store pass would: the list, then its roll-up; then the model's turn on the loop, then the
    // views' queued relays.
    void publish(const std::vector<AgentSession>& list) {
        store.sessions.set(list);
        store.aggregate.set(AggregateStatus::from(list));
        loop.drain();
        settleEvents();
    }

    ManualLoop loop{std::chrono::system_clock::now()};
    PreferencesStore preferences;
    FakeSessionReader reader;
    FakeSessionFocusing focuser;
    SessionStore store{reader, preferences, {}, [](auto) { return nullptr; }, loop, loop.clock()};
    TrayViewModel model{store, focuser, loop, [](std::size_t) { return std::size_t{0}; }};
};

} // namespace tovrin::test
