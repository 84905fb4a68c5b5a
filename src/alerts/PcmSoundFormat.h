#pragma once

#include "core/Result.h"

#include <cstddef>
#include <cstdint>
#include <istream>

namespace tovrin {

// Uncompressed audio in a RIFF WAVE or AIFF / AIFF-C container: where its samples are and how to
// read them.
struct PcmSoundFormat {
    enum class Encoding { unsigned8, signed8, signed16, signed24, signed32, float32, float64 };

    Encoding encoding = Encoding::signed16;
    bool bigEndian = false;
    int channels = 0;
    int sampleRate = 0;
    // Bytes of one sample in the file; wider than the encoding when a writer pads (20-bit in 4).
    int bytesPerSample = 2;
    std::uint64_t dataOffset = 0;
    std::uint64_t frames = 0;

    std::size_t bytesPerFrame() const { return static_cast<std::size_t>(bytesPerSample) * channels; }
};

// Reads the container's chunks (in whatever order they come) and returns the sample format, or
// why the stream holds no sound that can be played. Data that stops before its declared end is
// taken as far as it goes; a stream without a single whole frame is a failure.
Result<PcmSoundFormat> readPcmSoundFormat(std::istream& in);

// Converts `frameCount` frames from the file's bytes into interleaved floats in [-1, 1].
void convertPcmSamples(const PcmSoundFormat& format, const unsigned char* bytes, std::size_t frameCount,
                       float* out);

} // namespace tovrin
