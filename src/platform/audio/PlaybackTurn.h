#pragma once

#include <filesystem>
#include <optional>

namespace tovrin {

// One alert sound at a time for the user, across processes: whoever plays holds a write lock on a
// file in the runtime folder, and a newer sound asks the holder to stop (SIGTERM) before it starts.
class PlaybackTurn {
public:
    // <$XDG_RUNTIME_DIR>/tovrin-sound.lock; nothing without a runtime folder.
    static std::optional<std::filesystem::path> defaultLockFile();

    // Takes the turn, stopping the sound that holds it. If the lock can't be had (no such folder, a
    // holder that won't let go), the sound plays anyway rather than staying silent.
    explicit PlaybackTurn(const std::optional<std::filesystem::path>& lockFile);
    // Lets go of the turn.
    ~PlaybackTurn();
    PlaybackTurn(const PlaybackTurn&) = delete;
    PlaybackTurn& operator=(const PlaybackTurn&) = delete;

    bool held() const { return m_held; }

private:
    int m_fd = -1;
    bool m_held = false;
};

} // namespace tovrin
