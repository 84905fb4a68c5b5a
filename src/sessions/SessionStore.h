#pragma once

#include "core/Clock.h"
#include "core/Lifetime.h"
#include "core/MainLoop.h"
#include "core/PreferencesStore.h"
#include "core/Property.h"
#include "core/Signal.h"
#include "sessions/AggregateStatus.h"
#include "sessions/DirectoryWatching.h"
#include "sessions/NotificationChannel.h"
#include "sessions/SessionReading.h"

#include <functional>
#include <map>
#include <memory>
#include <set>
#include <string>
#include <vector>

namespace tovrin {

// The live list of sessions: rebuilt from the status files in one pass on every change in the
// folder, on a 15 s tick, on every change of a setting and on every dismissal. It also tells
// the alert channels of sessions that have just started waiting, and runs the repeat reminder.
// Main loop only.
class SessionStore {
public:
    using WatcherFactory = std::function<std::unique_ptr<DirectoryWatching>(std::function<void()> onChange)>;

    static constexpr double tickInterval = 15;
    static constexpr double silentWorkingThreshold = 90;
    static constexpr double silentWorkingIdleThreshold = 45;
    static constexpr double waitingDecayThreshold = 300;
    static constexpr double minimumReminderInterval = 5;

    SessionStore(SessionReading& reader, PreferencesStore& preferences,
                 std::vector<std::shared_ptr<NotificationChannel>> channels, WatcherFactory makeWatcher,
                 MainLoop& loop, const Clock& clock);
    SessionStore(const SessionStore&) = delete;
    SessionStore& operator=(const SessionStore&) = delete;

    Signal<> objectWillChange;
    // Newest `updatedAt` first. Observers hear every assignment, also of an equal value.
    Property<std::vector<AgentSession>> sessions;
    Property<AggregateStatus> aggregate;
    // Assigned when it changes, in the pass and before the list.
    Property<std::vector<UnreachableHost>> unreachableHosts;

    // Starts the watcher, the tick, the reminder and the settings subscription, then runs the
    // first pass, so that the list reflects the folder when this returns. Once only.
    void start();
    void refresh();
    // Hides a session until its classified state changes or it leaves the list.
    void dismiss(const AgentSession& session);

    // Silent Antigravity sessions become waiting or idle from their transcripts.
    std::vector<AgentSession> interpretSilentAntigravity(std::vector<AgentSession> list) const;

private:
    std::vector<AgentSession> liveSessions(std::vector<AgentSession> list, TimePoint now) const;
    std::vector<AgentSession> applyDismissals(std::vector<AgentSession> list);
    void detectWaitingTransitions(const std::vector<AgentSession>& list);
    void rescheduleReminder();
    void fireReminder();
    double ageOf(const AgentSession& session) const;

    SessionReading& m_reader;
    PreferencesStore& m_preferences;
    std::vector<std::shared_ptr<NotificationChannel>> m_channels;
    WatcherFactory m_makeWatcher;
    MainLoop& m_loop;
    const Clock& m_clock;

    std::unique_ptr<DirectoryWatching> m_watcher;
    TimerHandle m_timer;
    TimerHandle m_reminderTimer;
    Subscriptions m_cancellables;
    std::set<std::string> m_waitingIds;
    std::map<std::string, SessionState> m_dismissed;
    bool m_started = false;
    Lifetime m_lifetime; // last: posted tasks check it before touching the store
};

} // namespace tovrin
