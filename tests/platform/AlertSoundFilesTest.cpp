#include "alerts/SoundCatalog.h"
#include "platform/audio/LinuxSoundPlayer.h"
#include "platform/linux/InstallationPaths.h"
#include "support/ScopedEnv.h"
#include "support/TempDir.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <gtest/gtest.h>
#include <iterator>
#include <map>
#include <vector>

namespace tovrin {
namespace {

namespace fs = std::filesystem;

struct Wav {
    std::uint16_t format = 0;
    std::uint16_t channels = 0;
    std::uint32_t rate = 0;
    std::uint16_t bits = 0;
    std::vector<std::int16_t> samples;

    double seconds() const { return rate ? static_cast<double>(samples.size()) / channels / rate : 0; }
};

// Reads a RIFF WAV by its chunks, so that the check doesn't lean on the player's decoder.
std::optional<Wav> readWav(const fs::path& file) {
    std::ifstream in(file, std::ios::binary);
    const std::vector<char> bytes{std::istreambuf_iterator<char>(in), {}};
    auto u32 = [&](std::size_t at) {
        std::uint32_t v = 0;
        std::memcpy(&v, bytes.data() + at, 4);
        return v;
    };
    auto u16 = [&](std::size_t at) {
        std::uint16_t v = 0;
        std::memcpy(&v, bytes.data() + at, 2);
        return v;
    };
    if (bytes.size() < 12 || std::memcmp(bytes.data(), "RIFF", 4) != 0 ||
        std::memcmp(&bytes[8], "WAVE", 4) != 0)
        return std::nullopt;
    Wav wav;
    bool haveData = false;
    for (std::size_t at = 12; at + 8 <= bytes.size();) {
        const std::uint32_t size = u32(at + 4);
        if (at + 8 + size > bytes.size()) return std::nullopt;
        if (std::memcmp(&bytes[at], "fmt ", 4) == 0 && size >= 16) {
            wav.format = u16(at + 8);
            wav.channels = u16(at + 10);
            wav.rate = u32(at + 12);
            wav.bits = u16(at + 22);
        } else if (std::memcmp(&bytes[at], "data", 4) == 0) {
            wav.samples.resize(size / 2);
            std::memcpy(wav.samples.data(), bytes.data() + at + 8, wav.samples.size() * 2);
            haveData = true;
        }
        at += 8 + size + (size & 1);
    }
    if (!haveData || wav.channels == 0) return std::nullopt;
    return wav;
}

// Loudness over time: RMS in 50 ms windows, scaled so that the loudest window is 1.
std::vector<double> loudnessCurve(const Wav& wav) {
    const std::size_t window = wav.rate / 20;
    std::vector<double> curve;
    for (std::size_t start = 0; start + window <= wav.samples.size(); start += window) {
        double sum = 0;
        for (std::size_t i = start; i < start + window; ++i)
            sum += double(wav.samples[i]) * wav.samples[i];
        curve.push_back(std::sqrt(sum / double(window)));
    }
    const double peak = *std::max_element(curve.begin(), curve.end());
    for (double& v : curve)
        v /= peak;
    return curve;
}

// The test programs lie two levels below the build folder, like bin/tovrin, so they find the
// payload copy that the build puts beside them.
TEST(AlertSoundFiles, ThemedSoundsBesideTheExecutablesAreShortDistinctMonoWavs) {
    const auto share = InstallationPaths::shareDir();
    ASSERT_EQ(share, fs::path(TOVRIN_BUILD_SHARE_DIR).lexically_normal());
    const fs::path folder = *share / "Sounds";
    const LinuxSoundPlayer player;
    std::map<std::string, std::vector<double>> curves;

    for (const auto& sound : SoundCatalog::themed()) {
        const fs::path file = folder / (sound.id + ".wav");
        const auto wav = readWav(file);
        ASSERT_TRUE(wav) << file;
        EXPECT_EQ(wav->format, 1) << sound.id;
        EXPECT_EQ(wav->channels, 1) << sound.id;
        EXPECT_EQ(wav->bits, 16) << sound.id;
        EXPECT_TRUE(wav->rate == 22050 || wav->rate == 44100) << sound.id << ": " << wav->rate;
        EXPECT_GE(wav->seconds(), 1.0) << sound.id;
        EXPECT_LE(wav->seconds(), 3.0) << sound.id;
        const auto peak = std::ranges::max(wav->samples, {}, [](std::int16_t s) { return std::abs(int(s)); });
        EXPECT_GT(std::abs(int(peak)), 16000) << sound.id << " is too quiet";
        EXPECT_TRUE(player.canDecode(file)) << sound.id;
        curves[sound.id] = loudnessCurve(*wav);
    }

    // Seven different sounds, not one recipe with seven seeds: their loudness curves must differ.
    for (auto a = curves.begin(); a != curves.end(); ++a) {
        for (auto b = std::next(a); b != curves.end(); ++b) {
            const std::size_t n = std::min(a->second.size(), b->second.size());
            double distance = 0;
            for (std::size_t i = 0; i < n; ++i)
                distance += std::abs(a->second[i] - b->second[i]);
            EXPECT_GT(distance / double(n), 0.06) << a->first << " and " << b->first << " sound alike";
        }
    }
}

TEST(AlertSoundFiles, EverySystemNameHasAPlayableFreedesktopSound) {
    if (!fs::is_directory("/usr/share/sounds/freedesktop/stereo"))
        GTEST_SKIP() << "the freedesktop sound theme is not installed";
    test::TempDir home;
    const test::ScopedEnv dataHome("XDG_DATA_HOME", home.path().string());
    const test::ScopedEnv dataDirs("XDG_DATA_DIRS", "/usr/share");
    const LinuxSoundPlayer player;

    for (const auto& sound : SoundCatalog::system()) {
        const auto event = SoundCatalog::themeEvent(sound.id);
        ASSERT_TRUE(event) << sound.id;
        const auto file = player.themeSound(std::string(*event));
        ASSERT_TRUE(file) << sound.id << " -> " << *event;
        EXPECT_TRUE(player.canDecode(*file)) << *file;
    }
}

} // namespace
} // namespace tovrin
