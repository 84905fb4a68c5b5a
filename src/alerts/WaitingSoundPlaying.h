#pragma once

#include <string>

namespace tovrin {

// Plays the waiting sound named by an alert-sound id.
class WaitingSoundPlaying {
public:
    virtual ~WaitingSoundPlaying() = default;
    virtual void playWaiting(const std::string& soundId) = 0;
};

} // namespace tovrin
