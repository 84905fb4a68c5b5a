#include "alerts/PcmSoundFormat.h"

#include "alerts/PcmSoundFile.h"
#include "support/TempDir.h"

#include <cstdint>
#include <cstring>
#include <gtest/gtest.h>
#include <sstream>
#include <string>
#include <vector>

namespace tovrin {
namespace {

using Encoding = PcmSoundFormat::Encoding;

std::string bytesOf(std::uint64_t value, int count, bool bigEndian) {
    std::string out(static_cast<std::size_t>(count), '\0');
    for (int i = 0; i < count; ++i)
        out[static_cast<std::size_t>(bigEndian ? count - 1 - i : i)] =
            static_cast<char>((value >> (8 * i)) & 0xFF);
    return out;
}
std::string le(std::uint64_t value, int count) {
    return bytesOf(value, count, false);
}
std::string be(std::uint64_t value, int count) {
    return bytesOf(value, count, true);
}

// A chunk with its pad byte when the size is odd, unless told to leave it out as some writers do.
std::string chunk(const std::string& id, const std::string& payload, bool bigEndian, bool pad = true) {
    std::string out = id + bytesOf(payload.size(), 4, bigEndian) + payload;
    if (pad && payload.size() % 2 == 1) out += '\0';
    return out;
}

std::string riff(const std::string& chunks) {
    return "RIFF" + le(4 + chunks.size(), 4) + "WAVE" + chunks;
}
std::string form(const std::string& type, const std::string& chunks) {
    return "FORM" + be(4 + chunks.size(), 4) + type + chunks;
}

std::string fmt(std::uint16_t tag, int channels, int rate, int bits, int blockAlign = 0) {
    if (blockAlign == 0) blockAlign = channels * ((bits + 7) / 8);
    return chunk("fmt ",
                 le(tag, 2) + le(static_cast<std::uint64_t>(channels), 2) +
                     le(static_cast<std::uint64_t>(rate), 4) +
                     le(static_cast<std::uint64_t>(rate * blockAlign), 4) +
                     le(static_cast<std::uint64_t>(blockAlign), 2) + le(static_cast<std::uint64_t>(bits), 2),
                 false);
}

std::string extensibleFmt(std::uint16_t subFormat, int channels, int bits, int validBits) {
    const int blockAlign = channels * bits / 8;
    const std::string guidTail("\x00\x00\x00\x00\x10\x00\x80\x00\x00\xAA\x00\x38\x9B\x71", 14);
    return chunk("fmt ",
                 le(0xFFFE, 2) + le(static_cast<std::uint64_t>(channels), 2) + le(8000, 4) +
                     le(static_cast<std::uint64_t>(8000 * blockAlign), 4) +
                     le(static_cast<std::uint64_t>(blockAlign), 2) + le(static_cast<std::uint64_t>(bits), 2) +
                     le(22, 2) + le(static_cast<std::uint64_t>(validBits), 2) + le(3, 4) + le(subFormat, 2) +
                     guidTail,
                 false);
}

// 44100 Hz as an 80-bit extended float.
const std::string rate44100 = std::string("\x40\x0E\xAC\x44", 4) + std::string(6, '\0');

std::string comm(int channels, std::uint32_t frames, int bits, const std::string& compression = "") {
    std::string payload = be(static_cast<std::uint64_t>(channels), 2) + be(frames, 4) +
                          be(static_cast<std::uint64_t>(bits), 2) + rate44100;
    if (!compression.empty()) payload += compression + std::string("\x04none\x00", 6);
    return chunk("COMM", payload, true);
}

std::string ssnd(const std::string& samples, std::uint32_t offset = 0) {
    return chunk("SSND", be(offset, 4) + be(0, 4) + std::string(offset, '\x7F') + samples, true);
}

struct Decoded {
    PcmSoundFormat format;
    std::vector<float> samples;
};

// The format and every sample of an in-memory file, or the failure's reason.
Result<Decoded> decode(const std::string& file) {
    std::istringstream in(file);
    const auto format = readPcmSoundFormat(in);
    if (!format) return Result<Decoded>::failure(format.error());
    const PcmSoundFormat& f = format.value();
    std::vector<float> samples(f.frames * static_cast<std::size_t>(f.channels));
    const std::string bytes = file.substr(f.dataOffset, f.frames * f.bytesPerFrame());
    convertPcmSamples(f, reinterpret_cast<const unsigned char*>(bytes.data()), f.frames, samples.data());
    return Decoded{f, samples};
}

TEST(PcmSoundFormat, DecodesEveryEncodingLayoutAndCutToTheSameSignal) {
    // Every encoding carries -1, -0.5, 0, 0.5. The sample list's length is frames times channels, so
    // the channel count is checked to tell two frames of two channels from four of one.
    const std::vector<float> four{-1.0f, -0.5f, 0.0f, 0.5f}, ends{-1.0f, 0.5f}, halfOnly{0.5f};
    const std::string float32 = le(0xBF800000, 4) + le(0xBF000000, 4) + le(0, 4) + le(0x3F000000, 4);
    const std::string float64 =
        le(0xBFF0000000000000, 8) + le(0xBFE0000000000000, 8) + le(0, 8) + le(0x3FE0000000000000, 8);
    const std::string int24 = le(0x800000, 3) + le(0xC00000, 3) + le(0, 3) + le(0x400000, 3);
    const std::string half = le(0x4000, 2);
    const std::string aiffHalves = be(0x8000, 2) + be(0x4000, 2);
    // Five declared frames, of which three and half of the fourth are there.
    std::string cut = riff(fmt(1, 1, 8000, 16) + chunk("data", half + half + half + half + half, false));
    cut.resize(cut.size() - 3);
    const struct {
        const char* name;
        int channels;
        std::vector<float> samples;
        std::string file;
    } cases[] = {
        {"8-bit", 2, four,
         riff(fmt(1, 2, 8000, 8) + chunk("data", std::string("\x00\x40\x80\xC0", 4), false))},
        {"16-bit", 2, four,
         riff(fmt(1, 2, 8000, 16) +
              chunk("data", le(0x8000, 2) + le(0xC000, 2) + le(0, 2) + le(0x4000, 2), false))},
        {"24-bit", 2, four, riff(fmt(1, 2, 8000, 24) + chunk("data", int24, false))},
        {"32-bit", 2, four,
         riff(fmt(1, 2, 8000, 32) +
              chunk("data", le(0x80000000, 4) + le(0xC0000000, 4) + le(0, 4) + le(0x40000000, 4), false))},
        {"float", 2, four, riff(fmt(3, 2, 8000, 32) + chunk("data", float32, false))},
        {"double", 2, four, riff(fmt(3, 2, 8000, 64) + chunk("data", float64, false))},
        {"extensible 24 in 24", 2, four, riff(extensibleFmt(1, 2, 24, 24) + chunk("data", int24, false))},
        {"extensible float", 2, four, riff(extensibleFmt(3, 2, 32, 32) + chunk("data", float32, false))},
        {"AIFF 16-bit", 1, ends, form("AIFF", comm(1, 2, 16) + ssnd(aiffHalves))},
        {"AIFF 8-bit signed", 1, ends, form("AIFF", comm(1, 2, 8) + ssnd("\x80\x40"))},
        {"AIFF 24-bit", 1, ends, form("AIFF", comm(1, 2, 24) + ssnd(be(0x800000, 3) + be(0x400000, 3)))},
        {"AIFF-C NONE", 1, ends, form("AIFC", comm(1, 2, 16, "NONE") + ssnd(aiffHalves))},
        {"AIFF-C sowt", 1, ends, form("AIFC", comm(1, 2, 16, "sowt") + ssnd(le(0x8000, 2) + le(0x4000, 2)))},
        {"AIFF-C fl32", 1, ends,
         form("AIFC", comm(1, 2, 32, "fl32") + ssnd(be(0xBF800000, 4) + be(0x3F000000, 4)))},
        {"AIFF-C fl64", 1, ends,
         form("AIFC", comm(1, 2, 64, "fl64") + ssnd(be(0xBFF0000000000000, 8) + be(0x3FE0000000000000, 8)))},
        // Chunks come in any order, and odd ones with or without their pad byte.
        {"list first", 1, halfOnly,
         riff(chunk("LIST", "INFOISFT", false) + fmt(1, 1, 8000, 16) + chunk("data", half, false))},
        {"data before fmt", 1, halfOnly, riff(chunk("data", half, false) + fmt(1, 1, 8000, 16))},
        {"odd chunk, padded", 1, halfOnly,
         riff(chunk("junk", "abc", false) + fmt(1, 1, 8000, 16) + chunk("data", half, false))},
        {"odd chunk, pad left out", 1, halfOnly,
         riff(chunk("junk", "abc", false, false) + fmt(1, 1, 8000, 16) + chunk("data", half, false))},
        {"odd 8-bit data then a chunk", 1, halfOnly,
         riff(fmt(1, 1, 8000, 8) + chunk("data", "\xC0", false) + chunk("LIST", "INFO", false))},
        {"SSND before COMM, with an offset", 1, halfOnly,
         form("AIFF", ssnd(be(0x4000, 2), 3) + chunk("ANNO", "odd", true) + comm(1, 1, 16))},
        // Data that stops short plays what is there.
        {"WAVE cut inside a frame", 1, {0.5f, 0.5f, 0.5f}, cut},
        {"AIFF declaring more frames than it holds",
         2,
         {1 / 32768.0f, 2 / 32768.0f},
         form("AIFF", comm(2, 100, 16) + ssnd(be(1, 2) + be(2, 2) + be(3, 2)))},
        // A size still at its maximum, as a writer that never finished leaves it.
        {"unfinished data size",
         1,
         {0.5f, 0.0f},
         riff(fmt(1, 1, 8000, 16)) + "data" + le(0xFFFFFFFF, 4) + half + le(0, 2)},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        const auto decoded = decode(c.file);
        ASSERT_TRUE(decoded) << decoded.error();
        const PcmSoundFormat& format = decoded.value().format;
        EXPECT_EQ(format.channels, c.channels);
        EXPECT_EQ(format.sampleRate, c.file.starts_with("FORM") ? 44100 : 8000);
        EXPECT_EQ(decoded.value().samples, c.samples);
    }
}

TEST(PcmSoundFormat, RefusesJunkAndWhatItCannotPlay) {
    const std::string data = chunk("data", le(0x4000, 2), false);
    const std::string full = riff(fmt(1, 1, 8000, 16) + data);
    const struct {
        const char* name;
        std::string file;
    } cases[] = {
        {"empty", ""},
        {"text", "this is not a sound, just some words in a file\n"},
        {"RIFF of another kind", "RIFF" + le(4, 4) + "AVI "},
        {"WAVE with no chunks", riff("")},
        {"no format", riff(data)},
        {"no data", riff(fmt(1, 1, 8000, 16))},
        {"empty data", riff(fmt(1, 1, 8000, 16) + chunk("data", "", false))},
        {"cut inside the format", full.substr(0, 12 + 8 + 10)},
        {"ADPCM", riff(fmt(2, 1, 8000, 4) + data)},
        {"12-bit float", riff(fmt(3, 1, 8000, 16) + data)},
        {"no channels", riff(fmt(1, 0, 8000, 16, 2) + data)},
        {"rate zero", riff(fmt(1, 1, 0, 16) + data)},
        {"extensible, not PCM", riff(chunk("fmt ",
                                           le(0xFFFE, 2) + le(1, 2) + le(8000, 4) + le(16000, 4) + le(2, 2) +
                                               le(16, 2) + le(22, 2) + std::string(22, '\x01'),
                                           false) +
                                     data)},
        {"AIFF-C compressed", form("AIFC", comm(1, 1, 16, "ima4") + ssnd(be(0x4000, 2)))},
        {"AIFF with no sound data", form("AIFF", comm(1, 1, 16))},
        {"AIFF with zero frames", form("AIFF", comm(1, 0, 16) + ssnd(be(0x4000, 2)))},
    };
    for (const auto& c : cases) {
        const auto decoded = decode(c.file);
        ASSERT_FALSE(decoded) << c.name;
        EXPECT_FALSE(decoded.error().empty()) << c.name;
    }
}

TEST(PcmSoundFile, ReadsInChunksToTheEndOfTheData) {
    test::TempDir dir;
    std::string samples;
    for (int i = 0; i < 10; ++i)
        samples +=
            le(static_cast<std::uint64_t>(i * 0x0100), 2) + le(static_cast<std::uint64_t>(i * 0x0100), 2);
    // A trailing chunk after the data must not be read as sound.
    const auto file = dir.write("tone.wav", riff(fmt(1, 2, 22050, 16) + chunk("data", samples, false) +
                                                 chunk("LIST", "INFOtail", false)));
    auto opened = PcmSoundFile::open(file);
    ASSERT_TRUE(opened) << opened.error();
    auto sound = std::move(opened).value();
    EXPECT_EQ(sound->channels(), 2);
    EXPECT_EQ(sound->sampleRate(), 22050);
    EXPECT_EQ(sound->frames(), 10u);

    std::vector<float> all;
    std::vector<float> chunkBuffer(8);
    while (const std::size_t frames = sound->read(chunkBuffer.data(), 4))
        all.insert(all.end(), chunkBuffer.begin(), chunkBuffer.begin() + static_cast<long>(frames * 2));
    ASSERT_EQ(all.size(), 20u);
    EXPECT_FLOAT_EQ(all[18], 9 * 256 / 32768.0f);
    EXPECT_EQ(sound->read(chunkBuffer.data(), 4), 0u);

    EXPECT_FALSE(PcmSoundFile::open(dir.path() / "missing.wav"));
    EXPECT_FALSE(PcmSoundFile::open(dir.path()));
}

} // namespace
} // namespace tovrin
