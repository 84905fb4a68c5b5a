#pragma once

#include "alerts/DesktopNotifier.h"
#include "core/PreferencesStore.h"
#include "sessions/NotificationChannel.h"

namespace tovrin {

// A desktop notification per call, each replacing the one before. The server's capabilities are
// asked for at most once in a run, at start or before the first notification.
class NotificationBannerChannel final : public NotificationChannel {
public:
    NotificationBannerChannel(const PreferencesStore& preferences, DesktopNotifier& notifier);

    void notifyWaiting(const std::vector<AgentSession>& newlyWaiting,
                       const std::vector<AgentSession>& allWaiting) override;
    void remindWaiting(const std::vector<AgentSession>& waiting) override;

    // Asks once; later calls do nothing.
    void ensureCapabilitiesKnown();

private:
    void post(const std::vector<AgentSession>& sessions);

    const PreferencesStore& m_preferences;
    DesktopNotifier& m_notifier;
    bool m_didAskCapabilities = false;
};

} // namespace tovrin
