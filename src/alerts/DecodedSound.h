#pragma once

#include <cstddef>
#include <cstdint>

namespace tovrin {

// A sound being decoded into interleaved float samples in [-1, 1], a chunk at a time.
class DecodedSound {
public:
    virtual ~DecodedSound() = default;

    virtual int channels() const = 0;
    virtual int sampleRate() const = 0;
    // As the file declares it, or as far as the file actually reaches when it was cut short.
    virtual std::uint64_t frames() const = 0;
    // Fills `out` with up to `frameCount` frames (frameCount * channels() floats); returns how
    // many it wrote, 0 at the end or on a read error.
    virtual std::size_t read(float* out, std::size_t frameCount) = 0;
};

} // namespace tovrin
