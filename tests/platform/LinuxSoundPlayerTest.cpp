#include "platform/audio/LinuxSoundPlayer.h"

#include "support/ScopedEnv.h"
#include "support/TempDir.h"

#include <algorithm>
#include <chrono>
#include <cmath>
#include <condition_variable>
#include <csignal>
#include <cstdint>
#include <cstdlib>
#include <fstream>
#include <functional>
#include <gtest/gtest.h>
#include <mutex>
#include <numbers>
#include <spawn.h>
#include <string>
#include <sys/wait.h>
#include <thread>
#include <vector>

extern char** environ;

namespace tovrin {
namespace {

namespace fs = std::filesystem;
using namespace std::chrono_literals;
using Outcome = LinuxSoundPlayer::Outcome;
using Steady = std::chrono::steady_clock;
using test::ScopedEnv;

// A 16-bit mono PCM WAV of a 440 Hz tone.
fs::path writeTone(const fs::path& file, double seconds, int rate = 22050) {
    const auto frames = static_cast<std::uint32_t>(seconds * rate);
    std::ofstream out(file, std::ios::binary);
    auto u32 = [&](std::uint32_t v) { out.write(reinterpret_cast<const char*>(&v), 4); };
    auto u16 = [&](std::uint16_t v) { out.write(reinterpret_cast<const char*>(&v), 2); };
    out << "RIFF";
    u32(36 + frames * 2);
    out << "WAVEfmt ";
    u32(16);
    u16(1);
    u16(1);
    u32(static_cast<std::uint32_t>(rate));
    u32(static_cast<std::uint32_t>(rate) * 2);
    u16(2);
    u16(16);
    out << "data";
    u32(frames * 2);
    for (std::uint32_t i = 0; i < frames; ++i)
        u16(static_cast<std::uint16_t>(
            static_cast<std::int16_t>(8000 * std::sin(2 * std::numbers::pi * 440 * i / rate))));
    return file;
}

bool haveSox() {
    return std::system("command -v sox >/dev/null 2>&1") == 0;
}

// How each play ended, as the player's worker reports it.
class Outcomes {
public:
    using Seen = std::vector<std::pair<std::string, Outcome>>;

    LinuxSoundPlayer::Observer observer() {
        return [this](const fs::path& file, Outcome outcome) {
            std::lock_guard lock(m_mutex);
            m_seen.emplace_back(file.filename().string(), outcome);
            m_changed.notify_all();
        };
    }
    Seen waitFor(std::size_t count) {
        return waitUntil([&](const Seen& seen) { return seen.size() >= count; });
    }
    Seen waitForFile(const std::string& name) {
        return waitUntil([&](const Seen& seen) {
            return std::ranges::any_of(seen, [&](const auto& entry) { return entry.first == name; });
        });
    }
    Seen now() {
        std::lock_guard lock(m_mutex);
        return m_seen;
    }

private:
    // A test sound server may take a second or two to start a stream, hence the long wait.
    Seen waitUntil(const std::function<bool(const Seen&)>& done) {
        std::unique_lock lock(m_mutex);
        m_changed.wait_for(lock, 15s, [&] { return done(m_seen); });
        return m_seen;
    }

    std::mutex m_mutex;
    std::condition_variable m_changed;
    Seen m_seen;
};

TEST(LinuxSoundPlayer, CanDecodeOnlyRealSoundFiles) {
    test::TempDir dir;
    writeTone(dir.path() / "tone.wav", 0.2);
    writeTone(dir.path() / "no-samples.wav", 0.0);
    dir.write("text.wav", "this is not a sound\n");
    dir.write("empty.wav", "");
    LinuxSoundPlayer player;

    const std::vector<std::pair<std::string, bool>> cases{
        {"tone.wav", true},   {"no-samples.wav", false}, {"text.wav", false},
        {"empty.wav", false}, {"missing.wav", false},
    };
    for (const auto& [name, decodable] : cases)
        EXPECT_EQ(player.canDecode(dir.path() / name), decodable) << name;
    EXPECT_FALSE(player.canDecode(dir.path()));
}

TEST(LinuxSoundPlayer, CanDecodeAiffAndOggVorbis) {
    if (!haveSox()) GTEST_SKIP() << "sox is not installed";
    test::TempDir dir;
    LinuxSoundPlayer player;
    for (const char* name : {"tone.aiff", "tone.aif", "tone.oga", "stereo.wav"}) {
        const fs::path file = dir.path() / name;
        const std::string channels = std::string(name) == "stereo.wav" ? "2" : "1";
        const std::string command =
            "sox -q -n -r 44100 -c " + channels + " -t " +
            (file.extension() == ".oga" ? "ogg" : file.extension().string().substr(1)) + " '" +
            file.string() + "' synth 0.3 sine 440";
        ASSERT_EQ(std::system(command.c_str()), 0) << command;
        EXPECT_TRUE(player.canDecode(file)) << name;
    }
}

TEST(LinuxSoundPlayer, PlayWithoutASoundServerFailsQuietly) {
    test::TempDir dir;
    const fs::path tone = writeTone(dir.path() / "tone.wav", 0.3);
    ScopedEnv server("PULSE_SERVER", "unix:" + (dir.path() / "no-such-socket").string());
    Outcomes outcomes;
    LinuxSoundPlayer player("freedesktop", outcomes.observer());

    player.play(tone);
    player.play(dir.path() / "missing.wav");

    // The second play may replace the first before it starts; whatever ran, none was heard.
    const auto seen = outcomes.waitFor(1);
    ASSERT_FALSE(seen.empty());
    for (const auto& [name, outcome] : seen)
        EXPECT_EQ(outcome, Outcome::failed) << name;
}

// A private PulseAudio daemon with a null sink, so playback runs against a real server.
class LinuxSoundPlayerOnNullSink : public ::testing::Test {
protected:
    static void SetUpTestSuite() {
        runtime = std::make_unique<test::TempDir>();
        const std::string socket = (runtime->path() / "native").string();
        const std::string home = "HOME=" + runtime->path().string();
        const std::string xdg = "XDG_RUNTIME_DIR=" + runtime->path().string();
        const std::string protocol = "--load=module-native-protocol-unix auth-anonymous=1 socket=" + socket;
        std::vector<std::string> args{"pulseaudio",
                                      "-n",
                                      "--daemonize=no",
                                      "--exit-idle-time=-1",
                                      "--use-pid-file=no",
                                      "--log-target=stderr",
                                      "--log-level=0",
                                      "--load=module-null-sink sink_name=tovrin_test",
                                      protocol};
        std::vector<char*> argv;
        for (auto& arg : args)
            argv.push_back(arg.data());
        argv.push_back(nullptr);
        std::vector<std::string> env{home, xdg, "PATH=/usr/bin:/bin"};
        std::vector<char*> envp;
        for (auto& entry : env)
            envp.push_back(entry.data());
        envp.push_back(nullptr);

        pid_t child = 0;
        if (::posix_spawnp(&child, "pulseaudio", nullptr, nullptr, argv.data(), envp.data()) != 0) return;
        daemon = child;
        const auto deadline = Steady::now() + 10s;
        while (Steady::now() < deadline) {
            if (fs::exists(socket)) {
                serverAddress = "unix:" + socket;
                return;
            }
            if (::waitpid(daemon, nullptr, WNOHANG) == daemon) {
                daemon = 0;
                return;
            }
            std::this_thread::sleep_for(50ms);
        }
    }
    static void TearDownTestSuite() {
        if (daemon > 0) {
            ::kill(daemon, SIGTERM);
            ::waitpid(daemon, nullptr, 0);
        }
        daemon = 0;
        serverAddress.clear();
        runtime.reset();
    }
    void SetUp() override {
        if (serverAddress.empty()) GTEST_SKIP() << "pulseaudio could not be started";
        server.emplace("PULSE_SERVER", serverAddress);
    }

    static inline std::unique_ptr<test::TempDir> runtime;
    static inline pid_t daemon = 0;
    static inline std::string serverAddress;
    std::optional<ScopedEnv> server;
    test::TempDir dir;
};

TEST_F(LinuxSoundPlayerOnNullSink, PlaysToTheEndWhileTheCallerGoesOn) {
    const fs::path tone = writeTone(dir.path() / "tone.wav", 0.6);
    Outcomes outcomes;
    LinuxSoundPlayer player("freedesktop", outcomes.observer());

    const auto started = Steady::now();
    player.play(tone);
    EXPECT_TRUE(outcomes.now().empty()) << "play() waited for the sound";

    const auto seen = outcomes.waitFor(1);
    const auto took = Steady::now() - started;
    ASSERT_EQ(seen.size(), 1u);
    EXPECT_EQ(seen[0].second, Outcome::finished);
    // The sink takes samples in real time, so a sound that reached it can't be done much sooner.
    EXPECT_GE(took, 400ms);
}

TEST_F(LinuxSoundPlayerOnNullSink, ANewSoundCutsTheOldOneShort) {
    const fs::path longTone = writeTone(dir.path() / "long.wav", 4.0);
    const fs::path shortTone = writeTone(dir.path() / "short.wav", 0.2);
    Outcomes outcomes;
    std::size_t before = 0;
    {
        LinuxSoundPlayer player("freedesktop", outcomes.observer());
        player.play(longTone);
        std::this_thread::sleep_for(300ms);
        player.play(shortTone);

        // If the first play had not started yet, the second replaced it and it never sounds.
        const auto seen = outcomes.waitForFile("short.wav");
        ASSERT_FALSE(seen.empty());
        EXPECT_EQ(seen.back(), std::pair(std::string("short.wav"), Outcome::finished));
        if (seen.size() == 2) {
            EXPECT_EQ(seen[0], std::pair(std::string("long.wav"), Outcome::interrupted));
        }

        // Destroying the player stops what is playing instead of waiting for its end.
        before = seen.size();
        player.play(longTone);
        std::this_thread::sleep_for(300ms);
    }
    const auto seen = outcomes.now();
    for (std::size_t i = before; i < seen.size(); ++i)
        EXPECT_EQ(seen[i].second, Outcome::interrupted);
}

class LinuxSoundPlayerTheme : public ::testing::Test {
protected:
    void SetUp() override {
        dir.write("home/sounds/forge/stereo/bell.oga", "");
        dir.write("a/sounds/forge/stereo/bell.wav", "");
        dir.write("a/sounds/forge/index.theme",
                  "[Sound Theme]\nName=Forge\nInherits=anvil\nDirectories=stereo\n");
        dir.write("b/sounds/anvil/index.theme", "[Sound Theme]\nInherits=forge, freedesktop\n");
        dir.write("b/sounds/anvil/stereo/complete.ogg", "");
        dir.write("b/sounds/freedesktop/stereo/complete.oga", "");
        dir.write("b/sounds/freedesktop/stereo/dialog-warning.oga", "");
        dir.write("b/sounds/freedesktop/stereo/message.oga", "");
        dataHome.emplace("XDG_DATA_HOME", (dir.path() / "home").string());
        dataDirs.emplace("XDG_DATA_DIRS",
                         (dir.path() / "a").string() + ":relative/share:" + (dir.path() / "b").string());
    }

    test::TempDir dir;
    std::optional<ScopedEnv> dataHome;
    std::optional<ScopedEnv> dataDirs;
};

TEST_F(LinuxSoundPlayerTheme, FindsEventsThroughDataDirsInheritanceAndShorterNames) {
    const std::vector<std::tuple<std::string, std::string, std::optional<std::string>>> cases{
        {"forge", "bell", "home/sounds/forge/stereo/bell.oga"},
        {"forge", "complete", "b/sounds/anvil/stereo/complete.ogg"},
        {"forge", "dialog-warning", "b/sounds/freedesktop/stereo/dialog-warning.oga"},
        {"forge", "message-new-instant", "b/sounds/freedesktop/stereo/message.oga"},
        {"forge", "camera-shutter", std::nullopt},
        {"forge", "", std::nullopt},
        {"freedesktop", "bell", std::nullopt},
        {"freedesktop", "complete", "b/sounds/freedesktop/stereo/complete.oga"},
        {"no-such-theme", "dialog-warning", "b/sounds/freedesktop/stereo/dialog-warning.oga"},
    };
    for (const auto& [theme, event, expected] : cases) {
        const LinuxSoundPlayer player(theme);
        const auto found = player.themeSound(event);
        if (expected) {
            EXPECT_EQ(found, dir.path() / *expected) << theme << " / " << event;
        } else {
            EXPECT_EQ(found, std::nullopt) << theme << " / " << event;
        }
    }
}

} // namespace
} // namespace tovrin
