#include "alerts/PcmSoundFile.h"
#include "alerts/SoundCatalog.h"
#include "platform/audio/LinuxSoundPlayer.h"
#include "platform/linux/InstallationPaths.h"
#include "support/ScopedEnv.h"
#include "support/TempDir.h"

#include <algorithm>
#include <cmath>
#include <fstream>
#include <gtest/gtest.h>
#include <iterator>
#include <map>
#include <optional>
#include <vector>

namespace tovrin {
namespace {

namespace fs = std::filesystem;

// A shipped sound as the app reads it: its format, then its samples. The decoder has tests of its
// own on bytes written by hand.
struct Sound {
    PcmSoundFormat format;
    std::vector<float> samples;
    double seconds() const { return static_cast<double>(format.frames) / format.sampleRate; }
};

std::optional<Sound> readSound(const fs::path& file) {
    std::ifstream in(file, std::ios::binary);
    const auto format = readPcmSoundFormat(in);
    auto decoded = PcmSoundFile::open(file);
    if (!format || !decoded || format.value().channels != 1) return std::nullopt;
    Sound sound{format.value(), std::vector<float>(format.value().frames)};
    sound.samples.resize(decoded.value()->read(sound.samples.data(), sound.samples.size()));
    return sound;
}

// Loudness over time: RMS in 50 ms windows, scaled so that the loudest window is 1.
std::vector<double> loudnessCurve(const Sound& sound) {
    const std::size_t window = static_cast<std::size_t>(sound.format.sampleRate) / 20;
    std::vector<double> curve;
    for (std::size_t start = 0; start + window <= sound.samples.size(); start += window) {
        double sum = 0;
        for (std::size_t i = start; i < start + window; ++i)
            sum += double(sound.samples[i]) * sound.samples[i];
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
        const auto wav = readSound(file);
        ASSERT_TRUE(wav) << file << " is no mono sound";
        EXPECT_EQ(wav->format.encoding, PcmSoundFormat::Encoding::signed16) << sound.id;
        EXPECT_FALSE(wav->format.bigEndian) << sound.id;
        EXPECT_TRUE(wav->format.sampleRate == 22050 || wav->format.sampleRate == 44100)
            << sound.id << ": " << wav->format.sampleRate;
        EXPECT_GE(wav->seconds(), 1.0) << sound.id;
        EXPECT_LE(wav->seconds(), 3.0) << sound.id;
        EXPECT_GT(std::abs(std::ranges::max(wav->samples, {}, [](float s) { return std::abs(s); })), 0.49f)
            << sound.id << " is too quiet";
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
