#include "sessions/SessionStore.h"

#include "sessions/AntigravityWaitingInspector.h"
#include "sessions/ProcessLiveness.h"

#include <algorithm>
#include <numeric>
#include <unordered_set>

namespace tovrin {
namespace {

// A stable sort by `updatedAt`, newest first. Sorting indices spares moving whole records.
std::vector<AgentSession> newestFirst(std::vector<AgentSession> list) {
    std::vector<std::size_t> order(list.size());
    std::iota(order.begin(), order.end(), std::size_t{0});
    std::stable_sort(order.begin(), order.end(),
                     [&](std::size_t a, std::size_t b) { return list[a].updatedAt > list[b].updatedAt; });
    std::vector<AgentSession> sorted;
    sorted.reserve(list.size());
    for (const auto i : order)
        sorted.push_back(std::move(list[i]));
    return sorted;
}

std::vector<AgentSession> waitingOf(const std::vector<AgentSession>& list) {
    std::vector<AgentSession> result;
    std::copy_if(list.begin(), list.end(), std::back_inserter(result),
                 [](const AgentSession& s) { return s.state == SessionState::waiting; });
    return result;
}

} // namespace

SessionStore::SessionStore(SessionReading& reader, PreferencesStore& preferences,
                           std::vector<std::shared_ptr<NotificationChannel>> channels,
                           WatcherFactory makeWatcher, MainLoop& loop, const Clock& clock)
    : sessions(objectWillChange, {}), aggregate(objectWillChange, AggregateStatus::neutral()),
      unreachableHosts(objectWillChange, {}), m_reader(reader), m_preferences(preferences),
      m_channels(std::move(channels)), m_makeWatcher(std::move(makeWatcher)), m_loop(loop), m_clock(clock) {}

void SessionStore::start() {
    if (m_started) return;
    m_started = true;

    // The watcher calls back on its own thread: hand the pass to the main loop.
    if (m_makeWatcher) {
        m_watcher = m_makeWatcher(
            [&loop = m_loop, guard = m_lifetime.guard([this] { refresh(); })] { loop.post(guard); });
        if (m_watcher) m_watcher->start();
    }
    m_timer = m_loop.repeat(Seconds(tickInterval), m_lifetime.guard([this] { refresh(); }));
    rescheduleReminder();
    // The signal comes before the new value is stored; the posted pass runs after it.
    m_cancellables.add(m_preferences.objectWillChange.connect([this] {
        m_loop.post(m_lifetime.guard([this] {
            refresh();
            rescheduleReminder();
        }));
    }));
    refresh();
}

double SessionStore::ageOf(const AgentSession& session) const {
    return secondsBetween(session.updatedAt, m_clock.now());
}

void SessionStore::refresh() {
    const auto ttl = static_cast<double>(m_preferences.ttlSeconds());
    auto list = m_reader.readAll();
    const TimePoint now = m_clock.now();

    std::erase_if(list, [&](const AgentSession& s) {
        if (const auto alive = m_reader.processAlive(s)) return !*alive;
        return secondsBetween(s.updatedAt, now) > ttl;
    });
    const auto& disabled = m_preferences.disabledTools();
    std::erase_if(list, [&](const AgentSession& s) { return disabled.contains(s.tool); });
    list = newestFirst(std::move(list));

    list = interpretSilentAntigravity(std::move(list));
    const bool flagSilentWorking = m_preferences.flagSilentWorking();
    for (auto& s : list) {
        if (s.state != SessionState::working) continue;
        if (flagSilentWorking && ageOf(s) > silentWorkingThreshold) s.state = SessionState::waiting;
        if (!flagSilentWorking && ageOf(s) > silentWorkingIdleThreshold) s.state = SessionState::idle;
    }
    for (auto& s : list) {
        if (s.state == SessionState::waiting && ageOf(s) > waitingDecayThreshold)
            s.state = SessionState::idle;
    }
    list = applyDismissals(std::move(list));

    detectWaitingTransitions(list);
    const auto rollUp = AggregateStatus::from(list);
    if (auto away = m_reader.unreachableHosts(); away != unreachableHosts())
        unreachableHosts.set(std::move(away));
    sessions.set(std::move(list));
    aggregate.set(rollUp);
}

std::vector<AgentSession> SessionStore::interpretSilentAntigravity(std::vector<AgentSession> list) const {
    for (auto& s : list) {
        // A remote transcript path names a file on that host, never one here.
        if (!s.tool.starts_with("antigravity") || s.state != SessionState::working || s.host) continue;
        if (ageOf(s) <= silentWorkingIdleThreshold) continue;
        if (!s.transcriptPath || s.transcriptPath->empty()) continue;

        const auto tail =
            AntigravityWaitingInspector::readTail(*s.transcriptPath, AntigravityWaitingInspector::tailBytes);
        const auto message = tail ? AntigravityWaitingInspector::lastPlannerMessage(*tail) : std::nullopt;
        const bool asks = message && AntigravityWaitingInspector::looksLikeQuestion(*message);
        s.state = asks ? SessionState::waiting : SessionState::idle;
    }
    return list;
}

std::vector<AgentSession> SessionStore::applyDismissals(std::vector<AgentSession> list) {
    if (m_dismissed.empty()) return list;
    std::unordered_set<std::string> present;
    for (const auto& s : list)
        present.insert(s.id());
    std::erase_if(m_dismissed, [&](const auto& entry) { return !present.contains(entry.first); });

    std::erase_if(list, [&](const AgentSession& s) {
        const auto it = m_dismissed.find(s.id());
        if (it == m_dismissed.end()) return false;
        if (it->second == s.state) return true;
        m_dismissed.erase(it);
        return false;
    });
    return list;
}

void SessionStore::dismiss(const AgentSession& session) {
    m_dismissed[session.id()] = session.state;
    refresh();
}

void SessionStore::detectWaitingTransitions(const std::vector<AgentSession>& list) {
    const auto waiting = waitingOf(list);
    std::set<std::string> current;
    for (const auto& s : waiting)
        current.insert(s.id());

    std::vector<AgentSession> newlyWaiting;
    std::copy_if(waiting.begin(), waiting.end(), std::back_inserter(newlyWaiting),
                 [&](const AgentSession& s) { return !m_waitingIds.contains(s.id()); });
    if (!newlyWaiting.empty()) {
        for (const auto& channel : m_channels)
            channel->notifyWaiting(newlyWaiting, waiting);
    }
    m_waitingIds = std::move(current);
}

void SessionStore::rescheduleReminder() {
    m_reminderTimer.cancel();
    if (!m_preferences.repeatReminderEnabled()) return;
    const double interval =
        std::max(static_cast<double>(m_preferences.repeatReminderSeconds()), minimumReminderInterval);
    m_reminderTimer = m_loop.repeat(Seconds(interval), m_lifetime.guard([this] { fireReminder(); }));
}

void SessionStore::fireReminder() {
    const auto waiting = waitingOf(sessions());
    if (!m_preferences.repeatReminderEnabled() || waiting.empty()) return;
    for (const auto& channel : m_channels)
        channel->remindWaiting(waiting);
}

} // namespace tovrin
