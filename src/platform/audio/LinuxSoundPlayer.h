#pragma once

#include "alerts/SoundPlayer.h"

#include <atomic>
#include <condition_variable>
#include <cstdint>
#include <functional>
#include <mutex>
#include <thread>
#include <vector>

namespace tovrin {

// Decodes with libsndfile and plays through the PulseAudio simple API, which PipeWire's pulse
// server also speaks, so one client reaches the sound server of every current desktop.
// Playback runs on a worker thread of its own, one sound at a time: a new play cuts the sound
// that is playing short. Without a sound server nothing is heard and nothing is reported.
class LinuxSoundPlayer final : public SoundPlayer {
public:
    enum class Outcome { finished, interrupted, failed };
    // Told on the worker thread how each play ended; for diagnostics and tests.
    using Observer = std::function<void(const std::filesystem::path&, Outcome)>;

    // `themeName` is the desktop's sound theme; "freedesktop" is always searched after it.
    explicit LinuxSoundPlayer(std::string themeName = "freedesktop", Observer observer = {});
    // Stops what is playing and joins the worker.
    ~LinuxSoundPlayer() override;
    LinuxSoundPlayer(const LinuxSoundPlayer&) = delete;
    LinuxSoundPlayer& operator=(const LinuxSoundPlayer&) = delete;

    bool canDecode(const std::filesystem::path& file) const override;
    void play(const std::filesystem::path& file) override;
    // Per the XDG sound theme layout: <data dir>/sounds/<theme>/stereo/<event>.<oga|ogg|wav>, in
    // $XDG_DATA_HOME, then each of $XDG_DATA_DIRS; the theme, the themes it inherits, then
    // "freedesktop"; and if the event has no file, its shorter forms ("message-new-instant",
    // "message-new", "message").
    std::optional<std::filesystem::path> themeSound(const std::string& eventName) const override;

private:
    void run();
    Outcome playOne(const std::filesystem::path& file, std::uint64_t generation);
    bool superseded(std::uint64_t generation) const;
    std::vector<std::string> themeChain(const std::vector<std::filesystem::path>& dataDirs) const;

    std::string m_themeName;
    Observer m_observer;
    std::mutex m_mutex;
    std::condition_variable m_wake;
    std::optional<std::filesystem::path> m_pending;
    // Raised by every play and by destruction; a sound whose generation is behind stops early.
    std::atomic<std::uint64_t> m_generation{0};
    std::atomic<bool> m_quit{false};
    std::thread m_worker;
};

} // namespace tovrin
