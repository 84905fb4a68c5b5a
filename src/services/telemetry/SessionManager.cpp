#include "services/telemetry/SessionManager.h"

#include <algorithm>
#include <cstdio>
#include <ctime>
#include <utility>

namespace tovrin {
namespace {

constexpr Seconds lastMonth{2592000}; // 30 days

long long secondsSince1970(TimePoint time) {
    return std::chrono::duration_cast<std::chrono::seconds>(time.time_since_epoch()).count();
}

// All or nothing: a list that doesn't read as a whole is no list.
std::vector<StoredSession> decodeSessions(const std::optional<nlohmann::json>& stored) {
    std::vector<StoredSession> sessions;
    if (!stored || !stored->is_array()) return sessions;
    for (const auto& entry : *stored) {
        const auto st = entry.find("st"), dn = entry.find("dn");
        if (!entry.is_object() || st == entry.end() || dn == entry.end() || !st->is_number_integer() ||
            !dn->is_number_integer())
            return {};
        sessions.push_back({TimePoint(std::chrono::seconds(st->get<long long>())), dn->get<long long>()});
    }
    return sessions;
}

nlohmann::json encodeSessions(const std::vector<StoredSession>& sessions) {
    nlohmann::json array = nlohmann::json::array();
    for (const auto& session : sessions)
        array.push_back({{"st", secondsSince1970(session.startedAt)}, {"dn", session.durationInSeconds}});
    return array;
}

} // namespace

SessionManager::SessionManager(DefaultsStore& store, const Clock& clock, MainLoop& loop,
                               RunOnWorker runOnWorker, InternalSignal internalSignal)
    : m_store(store), m_clock(clock), m_loop(loop), m_runOnWorker(std::move(runOnWorker)),
      m_internalSignal(std::move(internalSignal)) {
    const TimePoint now = m_clock.now();
    m_recentSessions = decodeSessions(m_store.object("recentSessions"));
    if (const auto count = m_store.object("deletedSessionsCount"); count && count->is_number_integer())
        m_deletedSessionsCount = count->get<long long>();
    if (const auto first = m_store.object("firstSessionDate"); first && first->is_string())
        m_firstSessionDate = first->get<std::string>();
    if (const auto days = m_store.object("distinctDaysUsed"); days && days->is_array()) {
        for (const auto& day : *days)
            if (day.is_string()) m_distinctDaysUsed.push_back(day.get<std::string>());
    }

    const TimePoint cutoff = now - std::chrono::duration_cast<TimePoint::duration>(retention);
    if (const auto aged =
            std::erase_if(m_recentSessions, [&](const StoredSession& s) { return s.startedAt <= cutoff; });
        aged > 0) {
        m_deletedSessionsCount += static_cast<long long>(aged);
        write("deletedSessionsCount", m_deletedSessionsCount);
        // Written with the count, or the next run would count the same sessions again.
        writeRecentSessions();
    }

    if (const auto today = dayOf(now); m_distinctDaysUsed.empty() || m_distinctDaysUsed.back() != today) {
        m_distinctDaysUsed.push_back(today);
        write("distinctDaysUsed", m_distinctDaysUsed);
    }
}

std::string SessionManager::dayOf(TimePoint time) const {
    const std::time_t seconds = std::chrono::system_clock::to_time_t(time);
    std::tm local{};
    ::localtime_r(&seconds, &local);
    char text[16];
    std::strftime(text, sizeof text, "%Y-%m-%d", &local);
    return text;
}

void SessionManager::write(const std::string& key, nlohmann::json value) {
    m_runOnWorker(
        [&store = m_store, key, value = std::move(value)]() mutable { store.set(key, std::move(value)); });
}

void SessionManager::writeRecentSessions() {
    m_runOnWorker([&store = m_store, sessions = m_recentSessions] {
        store.set("recentSessions", encodeSessions(sessions));
    });
    m_lastWrittenAt = m_clock.now();
    m_unwritten = false;
}

void SessionManager::startNewSession() {
    stopSessionTimer();
    if (m_recentSessions.empty()) {
        const auto today = dayOf(m_clock.now());
        m_firstSessionDate = today;
        write("firstSessionDate", today);
        m_internalSignal("TelemetryDeck.Acquisition.newInstallDetected",
                         {{"TelemetryDeck.Acquisition.firstSessionDate", today}});
    }
    m_currentSessionStartedAt = m_clock.now();
    m_currentSessionDuration = 0;
    updateSessionDuration();
    m_sessionDurationUpdater = m_loop.repeat(Seconds(1), [this] { updateSessionDuration(); });
}

void SessionManager::stopSessionTimer() {
    m_sessionDurationUpdater.cancel();
    m_sessionDurationLastUpdatedAt.reset();
}

void SessionManager::updateSessionDuration() {
    const TimePoint now = m_clock.now();
    if (m_sessionDurationLastUpdatedAt)
        m_currentSessionDuration += secondsBetween(*m_sessionDurationLastUpdatedAt, now);
    m_sessionDurationLastUpdatedAt = now;
    persistCurrentSessionIfNeeded();
}

void SessionManager::persistCurrentSessionIfNeeded() {
    if (m_currentSessionDuration < 1) return;
    const auto duration = static_cast<long long>(m_currentSessionDuration);
    const auto current =
        std::find_if(m_recentSessions.rbegin(), m_recentSessions.rend(),
                     [&](const StoredSession& s) { return s.startedAt == m_currentSessionStartedAt; });
    if (current == m_recentSessions.rend()) {
        m_recentSessions.push_back({m_currentSessionStartedAt, duration});
        // Written at once, so that a run that ends abruptly still counts as a run.
        writeRecentSessions();
        return;
    }
    m_unwritten = m_unwritten || current->durationInSeconds != duration;
    current->durationInSeconds = duration;
    // Not every second: each write is flushed to disk.
    if (m_unwritten &&
        (!m_lastWrittenAt || secondsBetween(*m_lastWrittenAt, m_clock.now()) >= persistInterval.count()))
        writeRecentSessions();
}

void SessionManager::flush() {
    if (m_sessionDurationUpdater.active()) updateSessionDuration();
    if (m_unwritten) writeRecentSessions();
}

SignalParameters SessionManager::parameters() const {
    const TimePoint now = m_clock.now();
    SignalParameters p;
    p["TelemetryDeck.Acquisition.firstSessionDate"] = m_firstSessionDate.value_or(dayOf(now));

    long long average = -1;
    if (m_recentSessions.size() == 1) {
        average = m_recentSessions.front().durationInSeconds;
    } else if (m_recentSessions.size() > 1) {
        long long total = 0;
        for (auto it = m_recentSessions.begin(); it != m_recentSessions.end() - 1; ++it)
            total += it->durationInSeconds;
        average = total / static_cast<long long>(m_recentSessions.size() - 1);
    }
    p["TelemetryDeck.Retention.averageSessionSeconds"] = std::to_string(average);

    p["TelemetryDeck.Retention.distinctDaysUsed"] = std::to_string(m_distinctDaysUsed.size());
    const auto monthAgo = dayOf(now - std::chrono::duration_cast<TimePoint::duration>(lastMonth));
    const auto recentDays = std::count_if(m_distinctDaysUsed.begin(), m_distinctDaysUsed.end(),
                                          [&](const std::string& day) { return day >= monthAgo; });
    p["TelemetryDeck.Retention.distinctDaysUsedLastMonth"] = std::to_string(recentDays);
    p["TelemetryDeck.Retention.totalSessionsCount"] =
        std::to_string(static_cast<long long>(m_recentSessions.size()) + m_deletedSessionsCount);
    if (m_recentSessions.size() >= 2)
        p["TelemetryDeck.Retention.previousSessionSeconds"] =
            std::to_string(m_recentSessions[m_recentSessions.size() - 2].durationInSeconds);
    return p;
}

} // namespace tovrin
