#include "platform/audio/SoundPlayback.h"

#include "alerts/PcmSoundFile.h"
#include "platform/audio/PulseSimpleLibrary.h"
#include "platform/audio/VorbisSoundFile.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <fstream>
#include <memory>
#include <string_view>
#include <vector>

namespace tovrin::SoundPlayback {
namespace {

namespace fs = std::filesystem;

constexpr int maxChannels = 8;
constexpr int maxRate = 384000;

// Ogg files by their first bytes, whatever their name; everything else is tried as WAV or AIFF.
std::unique_ptr<DecodedSound> openSound(const fs::path& file) {
    std::array<char, 4> magic{};
    std::ifstream(file, std::ios::binary).read(magic.data(), magic.size());
    if (std::string_view(magic.data(), magic.size()) == "OggS") {
        auto sound = VorbisSoundFile::open(file);
        return sound ? std::move(sound).value() : nullptr;
    }
    auto sound = PcmSoundFile::open(file);
    return sound ? std::move(sound).value() : nullptr;
}

// Something PulseAudio can take as it is.
bool playable(const DecodedSound* sound) {
    return sound && sound->frames() > 0 && sound->channels() >= 1 && sound->channels() <= maxChannels &&
           sound->sampleRate() > 0 && sound->sampleRate() <= maxRate;
}

class PulseStream {
public:
    PulseStream(const PulseSimpleLibrary& api, const pa_sample_spec& format, const pa_buffer_attr& buffer)
        : m_api(api), m_handle(api.newStream(nullptr, "Tovrin", PA_STREAM_PLAYBACK, nullptr, "Alert sound",
                                             &format, nullptr, &buffer, nullptr)) {}
    ~PulseStream() {
        if (m_handle) m_api.free(m_handle);
    }
    PulseStream(const PulseStream&) = delete;
    PulseStream& operator=(const PulseStream&) = delete;

    bool isOpen() const { return m_handle != nullptr; }
    bool write(const void* data, std::size_t bytes) {
        return m_api.write(m_handle, data, bytes, nullptr) >= 0;
    }
    bool drain() { return m_api.drain(m_handle, nullptr) >= 0; }
    void flush() { m_api.flush(m_handle, nullptr); }

private:
    const PulseSimpleLibrary& m_api;
    pa_simple* m_handle;
};

} // namespace

bool canDecode(const std::filesystem::path& file) {
    return playable(openSound(file).get());
}

Outcome play(const std::filesystem::path& file, const std::function<bool()>& stopRequested) {
    const auto sound = openSound(file);
    if (!playable(sound.get())) return Outcome::failed;
    const PulseSimpleLibrary* pulse = PulseSimpleLibrary::get();
    if (!pulse) return Outcome::failed;

    const int rate = sound->sampleRate();
    const int channels = sound->channels();
    const pa_sample_spec format{PA_SAMPLE_FLOAT32NE, static_cast<std::uint32_t>(rate),
                                static_cast<std::uint8_t>(channels)};
    // A short server-side buffer (a tenth of a second), so that a stop is heard quickly.
    const auto unset = static_cast<std::uint32_t>(-1);
    const auto tenthOfASecond = static_cast<std::uint32_t>(std::max(1, rate / 10) * channels * sizeof(float));
    const pa_buffer_attr buffer{unset, tenthOfASecond, unset, unset, unset};
    PulseStream stream(*pulse, format, buffer);
    if (!stream.isOpen()) return Outcome::failed;

    const std::size_t chunkFrames = static_cast<std::size_t>(std::max(1, rate / 20));
    std::vector<float> samples(chunkFrames * static_cast<std::size_t>(channels));
    for (;;) {
        if (stopRequested && stopRequested()) {
            stream.flush();
            return Outcome::interrupted;
        }
        const std::size_t frames = sound->read(samples.data(), chunkFrames);
        if (frames == 0) break;
        if (!stream.write(samples.data(), frames * static_cast<std::size_t>(channels) * sizeof(float)))
            return Outcome::failed;
    }
    return stream.drain() ? Outcome::finished : Outcome::failed;
}

} // namespace tovrin::SoundPlayback
