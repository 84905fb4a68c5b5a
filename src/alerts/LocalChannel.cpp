#include "alerts/LocalChannel.h"

namespace tovrin {

LocalChannel::LocalChannel(WaitingSoundPlaying& sound, const PreferencesStore& preferences)
    : m_sound(sound), m_preferences(preferences) {}

void LocalChannel::notifyWaiting(const std::vector<AgentSession>& newlyWaiting,
                                 const std::vector<AgentSession>& /*allWaiting*/) {
    play(newlyWaiting);
}

void LocalChannel::remindWaiting(const std::vector<AgentSession>& waiting) {
    play(waiting);
}

void LocalChannel::play(const std::vector<AgentSession>& sessions) {
    if (sessions.empty() || !m_preferences.soundEnabled()) return;
    m_sound.playWaiting(m_preferences.alertSound());
}

} // namespace tovrin
