#pragma once

#include "alerts/DecodedSound.h"
#include "alerts/PcmSoundFormat.h"
#include "core/Result.h"

#include <filesystem>
#include <fstream>
#include <memory>
#include <string>
#include <vector>

namespace tovrin {

// A WAV or AIFF file decoded as it is read.
class PcmSoundFile final : public DecodedSound {
public:
    // The file's sound, or why it has none that can be played.
    static Result<std::unique_ptr<PcmSoundFile>> open(const std::filesystem::path& file);

    int channels() const override { return m_format.channels; }
    int sampleRate() const override { return m_format.sampleRate; }
    std::uint64_t frames() const override { return m_format.frames; }
    std::size_t read(float* out, std::size_t frameCount) override;

private:
    PcmSoundFile(std::ifstream stream, const PcmSoundFormat& format);

    std::ifstream m_stream;
    PcmSoundFormat m_format;
    std::uint64_t m_framesLeft;
    std::vector<unsigned char> m_bytes;
};

} // namespace tovrin
