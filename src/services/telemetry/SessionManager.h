#pragma once

#include "core/Clock.h"
#include "core/DefaultsStore.h"
#include "core/MainLoop.h"
#include "services/telemetry/TelemetrySignaling.h"
#include "services/telemetry/TelemetryWorker.h"

#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace tovrin {

// One run of analytics, as the statistics keep it: its start, truncated to the second in the store,
// and how long it has run.
struct StoredSession {
    TimePoint startedAt;
    long long durationInSeconds = 0;
};

// The usage statistics every signal carries: how long runs last, how many there were, and on how
// many distinct days the application was used. A session here is one run of analytics, not an
// agent's session. Kept in the telemetry client's own store. Main loop only; the store is written
// from the worker.
class SessionManager {
public:
    using InternalSignal = std::function<void(const std::string& name, const SignalParameters& parameters)>;

    static constexpr Seconds retention{7776000}; // 90 days
    // How often a running session's growing duration is written; in between it lives in memory.
    static constexpr Seconds persistInterval{60};

    // Reads the store, ages out sessions older than 90 days and counts today as a day of use.
    SessionManager(DefaultsStore& store, const Clock& clock, MainLoop& loop, RunOnWorker runOnWorker,
                   InternalSignal internalSignal);
    SessionManager(const SessionManager&) = delete;
    SessionManager& operator=(const SessionManager&) = delete;

    // A new run: the first ever (no stored session) is announced as a new install.
    void startNewSession();
    // Writes the running session's duration now: at the end of the application.
    void flush();

    // The retention facts of the payload.
    SignalParameters parameters() const;
    const std::vector<StoredSession>& recentSessions() const { return m_recentSessions; }

private:
    void stopSessionTimer();
    void updateSessionDuration();
    void persistCurrentSessionIfNeeded();
    void writeRecentSessions();
    void write(const std::string& key, nlohmann::json value);
    std::string dayOf(TimePoint time) const;

    DefaultsStore& m_store;
    const Clock& m_clock;
    MainLoop& m_loop;
    RunOnWorker m_runOnWorker;
    InternalSignal m_internalSignal;

    std::vector<StoredSession> m_recentSessions;
    long long m_deletedSessionsCount = 0;
    std::optional<std::string> m_firstSessionDate;
    std::vector<std::string> m_distinctDaysUsed;

    TimePoint m_currentSessionStartedAt{};
    double m_currentSessionDuration = 0;
    TimerHandle m_sessionDurationUpdater;
    std::optional<TimePoint> m_sessionDurationLastUpdatedAt;
    std::optional<TimePoint> m_lastWrittenAt;
    bool m_unwritten = false;
};

} // namespace tovrin
