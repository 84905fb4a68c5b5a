#include "alerts/PcmSoundFormat.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cmath>
#include <cstring>
#include <optional>
#include <string>
#include <vector>

namespace tovrin {
namespace {

using Encoding = PcmSoundFormat::Encoding;
using Bytes = std::vector<unsigned char>;

constexpr std::uint16_t wavePcm = 1;
constexpr std::uint16_t waveFloat = 3;
constexpr std::uint16_t waveExtensible = 0xFFFE;
// What follows the format tag in the sub-format GUID of WAVE_FORMAT_EXTENSIBLE.
constexpr std::array<unsigned char, 14> guidTail{0x00, 0x00, 0x00, 0x00, 0x10, 0x00, 0x80,
                                                 0x00, 0x00, 0xAA, 0x00, 0x38, 0x9B, 0x71};
// Larger "fmt " or "COMM" chunks than this are not sound headers.
constexpr std::uint32_t maxHeaderChunk = 4096;

std::uint32_t little(const unsigned char* p, int bytes) {
    std::uint32_t v = 0;
    for (int i = bytes - 1; i >= 0; --i)
        v = (v << 8) | p[i];
    return v;
}

std::uint32_t big(const unsigned char* p, int bytes) {
    std::uint32_t v = 0;
    for (int i = 0; i < bytes; ++i)
        v = (v << 8) | p[i];
    return v;
}

bool readAt(std::istream& in, std::uint64_t offset, unsigned char* out, std::size_t size) {
    in.clear();
    in.seekg(static_cast<std::streamoff>(offset));
    in.read(reinterpret_cast<char*>(out), static_cast<std::streamsize>(size));
    return static_cast<std::size_t>(in.gcount()) == size;
}

std::uint64_t streamSize(std::istream& in) {
    in.clear();
    in.seekg(0, std::ios::end);
    const auto end = in.tellg();
    return end < 0 ? 0 : static_cast<std::uint64_t>(end);
}

bool isChunkId(const unsigned char* id) {
    for (int i = 0; i < 4; ++i) {
        if (id[i] < 0x20 || id[i] > 0x7E) return false;
    }
    return true;
}

struct Chunk {
    std::array<unsigned char, 4> id{};
    std::uint64_t payload = 0; // offset of the contents
    std::uint32_t size = 0;

    bool is(const char* name) const { return std::memcmp(id.data(), name, 4) == 0; }
};

// Walks the chunks of a RIFF or IFF container from `start`, calling `visit` for each until it
// returns false. Chunks are padded to an even size; some writers forget the pad byte, which shows
// when only the unpadded position starts with a readable chunk name.
template <typename Visit>
void forEachChunk(std::istream& in, std::uint64_t start, std::uint64_t end, bool bigEndian, Visit visit) {
    std::uint64_t at = start;
    while (at + 8 <= end) {
        std::array<unsigned char, 8> header{};
        if (!readAt(in, at, header.data(), header.size())) return;
        Chunk chunk;
        std::memcpy(chunk.id.data(), header.data(), 4);
        chunk.payload = at + 8;
        chunk.size = bigEndian ? big(header.data() + 4, 4) : little(header.data() + 4, 4);
        if (!visit(chunk)) return;
        std::uint64_t next = chunk.payload + chunk.size;
        if (chunk.size % 2 == 1) {
            std::array<unsigned char, 4> padded{}, unpadded{};
            const bool paddedOk = readAt(in, next + 1, padded.data(), 4) && isChunkId(padded.data());
            const bool unpaddedOk = readAt(in, next, unpadded.data(), 4) && isChunkId(unpadded.data());
            if (paddedOk || !unpaddedOk) ++next;
        }
        at = next;
    }
}

std::optional<Bytes> chunkContents(std::istream& in, const Chunk& chunk) {
    if (chunk.size > maxHeaderChunk) return std::nullopt;
    Bytes bytes(chunk.size);
    if (!readAt(in, chunk.payload, bytes.data(), bytes.size())) return std::nullopt;
    return bytes;
}

// The encoding of integer samples of `bits` significant bits stored in `bytes` bytes.
std::optional<Encoding> integerEncoding(int bits, int bytes, bool unsignedBytes) {
    if (bits < 1 || bits > bytes * 8) return std::nullopt;
    switch (bytes) {
    case 1:
        return unsignedBytes ? Encoding::unsigned8 : Encoding::signed8;
    case 2:
        return Encoding::signed16;
    case 3:
        return Encoding::signed24;
    case 4:
        return Encoding::signed32;
    default:
        return std::nullopt;
    }
}

std::optional<Encoding> floatEncoding(int bytes) {
    if (bytes == 4) return Encoding::float32;
    if (bytes == 8) return Encoding::float64;
    return std::nullopt;
}

// Frames in the data, declared or as far as the stream reaches, whichever is less.
Result<PcmSoundFormat> finish(PcmSoundFormat format, std::uint64_t declaredFrames, std::uint64_t dataEnd,
                              std::uint64_t streamEnd) {
    if (format.channels < 1) return Result<PcmSoundFormat>::failure("the sound has no channels");
    if (format.sampleRate < 1) return Result<PcmSoundFormat>::failure("the sample rate is invalid");
    const std::uint64_t available = std::min(dataEnd, streamEnd) - std::min(format.dataOffset, streamEnd);
    format.frames = std::min(declaredFrames, available / format.bytesPerFrame());
    if (format.frames == 0) return Result<PcmSoundFormat>::failure("the sound has no samples");
    return format;
}

Result<PcmSoundFormat> readWave(std::istream& in, std::uint64_t size) {
    std::optional<Bytes> fmt;
    std::optional<Chunk> data;
    forEachChunk(in, 12, size, false, [&](const Chunk& chunk) {
        if (chunk.is("fmt ")) fmt = chunkContents(in, chunk);
        if (chunk.is("data")) data = chunk;
        return !(fmt && data);
    });
    if (!fmt || fmt->size() < 16) return Result<PcmSoundFormat>::failure("the WAV file has no format chunk");
    if (!data) return Result<PcmSoundFormat>::failure("the WAV file has no data chunk");

    const unsigned char* f = fmt->data();
    std::uint16_t tag = static_cast<std::uint16_t>(little(f, 2));
    const int bits = static_cast<int>(little(f + 14, 2));
    if (tag == waveExtensible) {
        if (fmt->size() < 40 || std::memcmp(f + 26, guidTail.data(), guidTail.size()) != 0)
            return Result<PcmSoundFormat>::failure("the WAV file's sub-format is not PCM");
        tag = static_cast<std::uint16_t>(little(f + 24, 2));
    }

    PcmSoundFormat format;
    format.channels = static_cast<int>(little(f + 2, 2));
    format.sampleRate = static_cast<int>(std::min<std::uint32_t>(little(f + 4, 4), 0x7FFFFFFF));
    const int blockAlign = static_cast<int>(little(f + 12, 2));
    format.bytesPerSample = format.channels > 0 && blockAlign % format.channels == 0 && blockAlign > 0
                                ? blockAlign / format.channels
                                : (bits + 7) / 8;
    std::optional<Encoding> encoding;
    if (tag == wavePcm) encoding = integerEncoding(bits, format.bytesPerSample, true);
    if (tag == waveFloat && bits == format.bytesPerSample * 8)
        encoding = floatEncoding(format.bytesPerSample);
    if (!encoding)
        return Result<PcmSoundFormat>::failure("the WAV encoding (format " + std::to_string(tag) + ", " +
                                               std::to_string(bits) + " bits) is not supported");
    format.encoding = *encoding;
    format.dataOffset = data->payload;
    // Writers that stream leave the size at its maximum until they know it, which means "to the end".
    const std::uint64_t dataEnd = data->size == 0xFFFFFFFF ? size : data->payload + data->size;
    return finish(format, UINT64_MAX, dataEnd, size);
}

// The 80-bit IEEE extended float of AIFF sample rates.
double extendedFloat(const unsigned char* p) {
    const int exponent = static_cast<int>(big(p, 2) & 0x7FFF);
    const std::uint64_t mantissa = (std::uint64_t{big(p + 2, 4)} << 32) | big(p + 6, 4);
    if (exponent == 0 && mantissa == 0) return 0;
    if (exponent == 0x7FFF) return 0;
    const double value = std::ldexp(static_cast<double>(mantissa), exponent - 16383 - 63);
    return (p[0] & 0x80) ? -value : value;
}

Result<PcmSoundFormat> readAiff(std::istream& in, std::uint64_t size, bool compressed) {
    std::optional<Bytes> comm;
    std::optional<Chunk> ssnd;
    forEachChunk(in, 12, size, true, [&](const Chunk& chunk) {
        if (chunk.is("COMM")) comm = chunkContents(in, chunk);
        if (chunk.is("SSND")) ssnd = chunk;
        return !(comm && ssnd);
    });
    if (!comm || comm->size() < 18 || (compressed && comm->size() < 22))
        return Result<PcmSoundFormat>::failure("the AIFF file has no common chunk");
    if (!ssnd || ssnd->size < 8) return Result<PcmSoundFormat>::failure("the AIFF file has no sound data");

    const unsigned char* c = comm->data();
    PcmSoundFormat format;
    format.channels = static_cast<int>(big(c, 2));
    const std::uint32_t declaredFrames = big(c + 2, 4);
    const int bits = static_cast<int>(big(c + 6, 2));
    const double rate = extendedFloat(c + 8);
    format.sampleRate = rate >= 1 && rate <= 0x7FFFFFFF ? static_cast<int>(std::lround(rate)) : 0;
    format.bytesPerSample = (bits + 7) / 8;
    format.bigEndian = true;

    std::string compression = compressed ? std::string(reinterpret_cast<const char*>(c + 18), 4) : "NONE";
    std::optional<Encoding> encoding;
    if (compression == "NONE" || compression == "twos") {
        encoding = integerEncoding(bits, format.bytesPerSample, false);
    } else if (compression == "sowt") {
        encoding = integerEncoding(bits, format.bytesPerSample, false);
        format.bigEndian = false;
    } else if (compression == "fl32" || compression == "FL32") {
        format.bytesPerSample = 4;
        encoding = Encoding::float32;
    } else if (compression == "fl64" || compression == "FL64") {
        format.bytesPerSample = 8;
        encoding = Encoding::float64;
    }
    if (!encoding)
        return Result<PcmSoundFormat>::failure("the AIFF encoding '" + compression + "' with " +
                                               std::to_string(bits) + " bits is not supported");
    format.encoding = *encoding;

    std::array<unsigned char, 4> offset{};
    if (!readAt(in, ssnd->payload, offset.data(), offset.size()))
        return Result<PcmSoundFormat>::failure("the AIFF file has no sound data");
    format.dataOffset = ssnd->payload + 8 + big(offset.data(), 4);
    return finish(format, declaredFrames, ssnd->payload + ssnd->size, size);
}

float sampleAt(const PcmSoundFormat& format, const unsigned char* p) {
    const auto read = [&](int bytes) { return format.bigEndian ? big(p, bytes) : little(p, bytes); };
    switch (format.encoding) {
    case Encoding::unsigned8:
        return (static_cast<float>(p[0]) - 128.0f) / 128.0f;
    case Encoding::signed8:
        return static_cast<float>(static_cast<std::int8_t>(p[0])) / 128.0f;
    case Encoding::signed16:
        return static_cast<float>(static_cast<std::int16_t>(read(2))) / 32768.0f;
    case Encoding::signed24: {
        // Shifted into the top of 32 bits so that the sign comes along.
        const auto value = static_cast<std::int32_t>(read(3) << 8);
        return static_cast<float>(value) / 2147483648.0f;
    }
    case Encoding::signed32:
        return static_cast<float>(static_cast<double>(static_cast<std::int32_t>(read(4))) / 2147483648.0);
    case Encoding::float32: {
        const float value = std::bit_cast<float>(read(4));
        return std::isfinite(value) ? std::clamp(value, -1.0f, 1.0f) : 0.0f;
    }
    case Encoding::float64: {
        const std::uint64_t bits = format.bigEndian ? (std::uint64_t{big(p, 4)} << 32) | big(p + 4, 4)
                                                    : (std::uint64_t{little(p + 4, 4)} << 32) | little(p, 4);
        const double value = std::bit_cast<double>(bits);
        return std::isfinite(value) ? static_cast<float>(std::clamp(value, -1.0, 1.0)) : 0.0f;
    }
    }
    return 0.0f;
}

} // namespace

Result<PcmSoundFormat> readPcmSoundFormat(std::istream& in) {
    const std::uint64_t size = streamSize(in);
    std::array<unsigned char, 12> header{};
    if (size < header.size() || !readAt(in, 0, header.data(), header.size()))
        return Result<PcmSoundFormat>::failure("the file is too short to be a sound");
    const auto is = [&](std::size_t at, const char* tag) { return std::memcmp(&header[at], tag, 4) == 0; };
    if (is(0, "RIFF") && is(8, "WAVE")) return readWave(in, size);
    if (is(0, "FORM") && is(8, "AIFF")) return readAiff(in, size, false);
    if (is(0, "FORM") && is(8, "AIFC")) return readAiff(in, size, true);
    return Result<PcmSoundFormat>::failure("the file is neither WAV nor AIFF");
}

void convertPcmSamples(const PcmSoundFormat& format, const unsigned char* bytes, std::size_t frameCount,
                       float* out) {
    const std::size_t samples = frameCount * static_cast<std::size_t>(format.channels);
    for (std::size_t i = 0; i < samples; ++i)
        out[i] = sampleAt(format, bytes + i * static_cast<std::size_t>(format.bytesPerSample));
}

} // namespace tovrin
