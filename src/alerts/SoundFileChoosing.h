#pragma once

#include <filesystem>
#include <optional>

namespace tovrin {

// Asks the user for a sound file to import; nothing when the dialog is cancelled.
class SoundFileChoosing {
public:
    virtual ~SoundFileChoosing() = default;
    virtual std::optional<std::filesystem::path> chooseSoundFile() = 0;
};

} // namespace tovrin
