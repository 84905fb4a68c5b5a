#include "alerts/SoundManager.h"

namespace tovrin {

SoundManager::SoundManager(const Clock& clock, const SoundCatalog& catalog, SoundPlayer& player)
    : m_clock(clock), m_catalog(catalog), m_player(player) {}

void SoundManager::playWaiting(const std::string& soundId) {
    const auto now = m_clock.now();
    // A clock set back gives a negative gap, which also holds the sound back.
    if (m_lastPlayed && secondsBetween(*m_lastPlayed, now) < minInterval) return;
    // Moved before the look-up, so that an id that resolves to nothing still takes its turn.
    m_lastPlayed = now;
    if (const auto file = m_catalog.sound(soundId)) m_player.play(*file);
}

} // namespace tovrin
