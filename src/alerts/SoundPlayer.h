#pragma once

#include <filesystem>
#include <optional>
#include <string>

namespace tovrin {

// The desktop's sound system. Playing returns at once; without an audio device it fails silently.
class SoundPlayer {
public:
    virtual ~SoundPlayer() = default;
    // Whether a playable sound can be made from the file (WAV, AIFF, the theme's formats).
    virtual bool canDecode(const std::filesystem::path& file) const = 0;
    virtual void play(const std::filesystem::path& file) = 0;
    // The file of a freedesktop sound-theme event ("message-new-instant", ...), if the theme has one.
    virtual std::optional<std::filesystem::path> themeSound(const std::string& eventName) const = 0;
};

} // namespace tovrin
