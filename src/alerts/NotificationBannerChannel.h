#pragma once

#include "alerts/DesktopNotifier.h"
#include "core/PreferencesStore.h"
#include "sessions/NotificationChannel.h"

namespace tovrin {

// A desktop notification per call, each replacing the one before. Permission (whether a
// notification server is there) is asked at most once in a run, and its answer not used: the
// notifier itself stays silent without a server.
class NotificationBannerChannel final : public NotificationChannel {
public:
    NotificationBannerChannel(const PreferencesStore& preferences, DesktopNotifier& notifier);

    void notifyWaiting(const std::vector<AgentSession>& newlyWaiting,
                       const std::vector<AgentSession>& allWaiting) override;
    void remindWaiting(const std::vector<AgentSession>& waiting) override;

    // Asks once; later calls do nothing.
    void ensureAuthorization();
    bool didRequestAuthorization() const { return m_didRequestAuthorization; }

private:
    void post(const std::vector<AgentSession>& sessions);

    const PreferencesStore& m_preferences;
    DesktopNotifier& m_notifier;
    bool m_didRequestAuthorization = false;
};

} // namespace tovrin
