#pragma once

#include "alerts/DecodedSound.h"
#include "core/Result.h"

#include <filesystem>
#include <memory>

namespace tovrin {

// An Ogg Vorbis file (the sound theme's .oga and .ogg) decoded through libvorbisfile, which is
// loaded the first time such a file is opened.
class VorbisSoundFile final : public DecodedSound {
public:
    static Result<std::unique_ptr<VorbisSoundFile>> open(const std::filesystem::path& file);
    ~VorbisSoundFile() override;
    VorbisSoundFile(const VorbisSoundFile&) = delete;
    VorbisSoundFile& operator=(const VorbisSoundFile&) = delete;

    int channels() const override { return m_channels; }
    int sampleRate() const override { return m_rate; }
    std::uint64_t frames() const override { return m_frames; }
    std::size_t read(float* out, std::size_t frameCount) override;

private:
    struct Decoder;
    explicit VorbisSoundFile(std::unique_ptr<Decoder> decoder);

    std::unique_ptr<Decoder> m_decoder;
    int m_channels = 0;
    int m_rate = 0;
    std::uint64_t m_frames = 0;
};

} // namespace tovrin
