#pragma once

#include <filesystem>
#include <functional>

namespace tovrin {

// Decoding and playing one sound file, blocking until it ends: WAV and AIFF by the built-in decoder,
// Ogg Vorbis through libvorbisfile, out through the PulseAudio simple API, which PipeWire's pulse
// server also speaks. Both libraries are loaded at the first sound that needs them.
namespace SoundPlayback {

enum class Outcome { finished, interrupted, failed };

// Whether the file holds a sound that can be played: frames, 1 to 8 channels, a usable rate.
bool canDecode(const std::filesystem::path& file);

// Plays the file to its end. `stopRequested` is asked between short chunks; once it answers yes,
// what the server still holds is dropped. Without a sound server the outcome is `failed`.
Outcome play(const std::filesystem::path& file, const std::function<bool()>& stopRequested);

} // namespace SoundPlayback
} // namespace tovrin
