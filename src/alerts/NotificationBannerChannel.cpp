#include "alerts/NotificationBannerChannel.h"

#include "alerts/WaitingMessageFormatter.h"

namespace tovrin {

NotificationBannerChannel::NotificationBannerChannel(const PreferencesStore& preferences,
                                                     DesktopNotifier& notifier)
    : m_preferences(preferences), m_notifier(notifier) {}

void NotificationBannerChannel::notifyWaiting(const std::vector<AgentSession>& newlyWaiting,
                                              const std::vector<AgentSession>& /*allWaiting*/) {
    post(newlyWaiting);
}

void NotificationBannerChannel::remindWaiting(const std::vector<AgentSession>& waiting) {
    post(waiting);
}

void NotificationBannerChannel::ensureCapabilitiesKnown() {
    if (m_didAskCapabilities) return;
    m_didAskCapabilities = true;
    m_notifier.learnCapabilities();
}

void NotificationBannerChannel::post(const std::vector<AgentSession>& sessions) {
    if (!m_preferences.notificationBannerEnabled() || sessions.empty()) return;
    ensureCapabilitiesKnown();
    const auto summary = WaitingMessageFormatter::summary(sessions);
    m_notifier.show(summary.title, summary.body);
}

} // namespace tovrin
