#include "platform/audio/VorbisSoundFile.h"

#include "platform/linux/SharedLibrary.h"

#include <algorithm>
#include <optional>

// The header's stdio callbacks are static data that would be compiled into every user; unused here.
#define OV_EXCLUDE_STATIC_CALLBACKS
#include <vorbis/vorbisfile.h>

namespace tovrin {
namespace {

struct VorbisFileLibrary {
    decltype(&::ov_fopen) open = nullptr;
    decltype(&::ov_info) info = nullptr;
    decltype(&::ov_pcm_total) pcmTotal = nullptr;
    decltype(&::ov_read_float) readFloat = nullptr;
    decltype(&::ov_clear) clear = nullptr;
};

std::optional<VorbisFileLibrary> load() {
    const auto library = SharedLibrary::load("libvorbisfile.so.3");
    if (!library) return std::nullopt;
    VorbisFileLibrary api;
    const bool complete = library->resolve("ov_fopen", api.open) && library->resolve("ov_info", api.info) &&
                          library->resolve("ov_pcm_total", api.pcmTotal) &&
                          library->resolve("ov_read_float", api.readFloat) &&
                          library->resolve("ov_clear", api.clear);
    if (!complete) return std::nullopt;
    return api;
}

const VorbisFileLibrary* vorbisFile() {
    static const std::optional<VorbisFileLibrary> api = load();
    return api ? &*api : nullptr;
}

} // namespace

struct VorbisSoundFile::Decoder {
    const VorbisFileLibrary& api;
    OggVorbis_File file{};
    bool open = false;

    explicit Decoder(const VorbisFileLibrary& library) : api(library) {}
    ~Decoder() {
        if (open) api.clear(&file);
    }
    Decoder(const Decoder&) = delete;
    Decoder& operator=(const Decoder&) = delete;
};

Result<std::unique_ptr<VorbisSoundFile>> VorbisSoundFile::open(const std::filesystem::path& file) {
    using Opened = Result<std::unique_ptr<VorbisSoundFile>>;
    const VorbisFileLibrary* api = vorbisFile();
    if (!api) return Opened::failure("libvorbisfile is not installed");
    auto decoder = std::make_unique<Decoder>(*api);
    if (api->open(file.c_str(), &decoder->file) != 0) return Opened::failure("not an Ogg Vorbis file");
    decoder->open = true;
    const vorbis_info* info = api->info(&decoder->file, -1);
    const ogg_int64_t total = api->pcmTotal(&decoder->file, -1);
    if (!info || info->channels < 1 || info->rate < 1 || total <= 0)
        return Opened::failure("the Ogg Vorbis file has no samples");
    std::unique_ptr<VorbisSoundFile> sound(new VorbisSoundFile(std::move(decoder)));
    sound->m_channels = info->channels;
    sound->m_rate = static_cast<int>(std::min<long>(info->rate, 0x7FFFFFFF));
    sound->m_frames = static_cast<std::uint64_t>(total);
    return sound;
}

VorbisSoundFile::VorbisSoundFile(std::unique_ptr<Decoder> decoder) : m_decoder(std::move(decoder)) {}

VorbisSoundFile::~VorbisSoundFile() = default;

std::size_t VorbisSoundFile::read(float* out, std::size_t frameCount) {
    std::size_t written = 0;
    while (written < frameCount) {
        float** channels = nullptr;
        int section = 0;
        const int wanted = static_cast<int>(std::min<std::size_t>(frameCount - written, 4096));
        const long got = m_decoder->api.readFloat(&m_decoder->file, &channels, wanted, &section);
        if (got <= 0) break;
        // A chained stream may change its layout midway; what follows such a change isn't played.
        const vorbis_info* info = m_decoder->api.info(&m_decoder->file, section);
        if (!info || info->channels != m_channels) break;
        for (long frame = 0; frame < got; ++frame) {
            for (int channel = 0; channel < m_channels; ++channel)
                out[(written + static_cast<std::size_t>(frame)) * m_channels + channel] =
                    std::clamp(channels[channel][frame], -1.0f, 1.0f);
        }
        written += static_cast<std::size_t>(got);
    }
    return written;
}

} // namespace tovrin
