#pragma once

#include "alerts/WaitingSoundPlaying.h"
#include "core/PreferencesStore.h"
#include "sessions/NotificationChannel.h"

namespace tovrin {

// The waiting sound: one sound per call, however many sessions it names.
class LocalChannel final : public NotificationChannel {
public:
    LocalChannel(WaitingSoundPlaying& sound, const PreferencesStore& preferences);

    void notifyWaiting(const std::vector<AgentSession>& newlyWaiting,
                       const std::vector<AgentSession>& allWaiting) override;
    void remindWaiting(const std::vector<AgentSession>& waiting) override;

private:
    void play(const std::vector<AgentSession>& sessions);

    WaitingSoundPlaying& m_sound;
    const PreferencesStore& m_preferences;
};

} // namespace tovrin
