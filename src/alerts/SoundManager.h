#pragma once

#include "alerts/SoundCatalog.h"
#include "alerts/SoundPlayer.h"
#include "alerts/WaitingSoundPlaying.h"
#include "core/Clock.h"

#include <optional>
#include <string>

namespace tovrin {

// Plays waiting sounds, at most one in any 3 seconds across all sessions and reminders, so
// that a burst of alerts sounds once. Main loop only.
class SoundManager final : public WaitingSoundPlaying {
public:
    static constexpr double minInterval = 3.0;

    SoundManager(const Clock& clock, const SoundCatalog& catalog, SoundPlayer& player);

    void playWaiting(const std::string& soundId) override;

    // The moment of the last admitted play.
    std::optional<TimePoint> lastPlayed() const { return m_lastPlayed; }

private:
    const Clock& m_clock;
    const SoundCatalog& m_catalog;
    SoundPlayer& m_player;
    std::optional<TimePoint> m_lastPlayed;
};

} // namespace tovrin
