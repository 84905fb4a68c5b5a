#include "platform/audio/LinuxSoundPlayer.h"

#include "support/ChildProcesses.h"
#include "support/PollUntil.h"
#include "support/ScopedEnv.h"
#include "support/ShellCommand.h"
#include "support/TempDir.h"

#include <chrono>
#include <cmath>
#include <csignal>
#include <cstdint>
#include <fstream>
#include <gtest/gtest.h>
#include <numbers>
#include <optional>
#include <string>
#include <thread>
#include <vector>

namespace tovrin {
namespace {

namespace fs = std::filesystem;
using namespace std::chrono_literals;
using Steady = std::chrono::steady_clock;
using test::ScopedEnv;

// A 16-bit mono PCM WAV of a 440 Hz tone at 22050 Hz.
fs::path writeTone(const fs::path& file, double seconds) {
    const std::uint32_t rate = 22050;
    const auto frames = static_cast<std::uint32_t>(seconds * rate);
    const auto le = [](std::uint32_t v, int bytes) {
        return std::string(reinterpret_cast<const char*>(&v), bytes);
    };
    std::string wav = "RIFF" + le(36 + frames * 2, 4) + "WAVEfmt " + le(16, 4) + le(1, 2) + le(1, 2) +
                      le(rate, 4) + le(rate * 2, 4) + le(2, 2) + le(16, 2) + "data" + le(frames * 2, 4);
    for (std::uint32_t i = 0; i < frames; ++i)
        wav += le(static_cast<std::uint16_t>(
                      static_cast<std::int16_t>(8000 * std::sin(2 * std::numbers::pi * 440 * i / rate))),
                  2);
    std::ofstream(file, std::ios::binary) << wav;
    return file;
}

// A 0.3 s tone made by sox in the format its options name, as other programs write them.
void writeWithSox(const fs::path& file, const std::string& options) {
    const std::string command = "sox -q -n " + options + " '" + file.string() + "' synth 0.3 sine 440";
    ASSERT_EQ(test::runCommand(command).exitCode, 0) << command;
}

const fs::path playerProgram = TOVRIN_PLAY_EXECUTABLE;

// tovrin-play's exit statuses.
constexpr int finished = 0;
constexpr int failed = 1;
constexpr int badUsage = 2;
constexpr int interrupted = 3;

// Starts tovrin-play with its output to /dev/null, as the app does.
pid_t startPlayer(std::vector<std::string> arguments) {
    arguments.insert(arguments.begin(), playerProgram.string());
    return test::spawnQuietly(std::move(arguments));
}

struct PlayerRun {
    int status;
    Steady::duration took;
};

PlayerRun runPlayer(const std::vector<std::string>& arguments) {
    const auto started = Steady::now();
    const int status = test::exitStatusOf(startPlayer(arguments));
    return {status, Steady::now() - started};
}

std::vector<test::ChildProcess> playerChildren() {
    auto children = test::childProcesses();
    std::erase_if(children, [](const auto& child) { return child.name != "tovrin-play"; });
    return children;
}

// Sox writes the formats as other programs do; the bytes themselves are checked by the decoder's tests.
TEST(LinuxSoundPlayer, CanDecodeOnlyRealSoundFilesWhateverWroteThem) {
    test::TempDir dir;
    writeTone(dir.path() / "tone.wav", 0.2);
    writeTone(dir.path() / "no-samples.wav", 0.0);
    dir.write("text.wav", "this is not a sound\n");
    dir.write("empty.wav", "");
    std::vector<std::pair<std::string, bool>> cases{
        {"tone.wav", true},   {"no-samples.wav", false}, {"text.wav", false},
        {"empty.wav", false}, {"missing.wav", false},    {".", false},
    };
    if (test::haveProgram("sox")) {
        for (const auto& [name, options] :
             {std::pair("tone.aiff", "-c 1 -t aiff"), std::pair("tone.aif", "-c 1 -t aif"),
              std::pair("tone.oga", "-c 1 -t ogg"), std::pair("stereo.wav", "-c 2 -t wav")}) {
            writeWithSox(dir.path() / name, std::string("-r 44100 ") + options);
            cases.emplace_back(name, true);
        }
    }
    LinuxSoundPlayer player;
    for (const auto& [name, decodable] : cases)
        EXPECT_EQ(player.canDecode(dir.path() / name), decodable) << name;
}

TEST(SoundPlayerProgram, FailsQuietlyWithoutASoundServerOrASound) {
    test::TempDir dir;
    const fs::path tone = writeTone(dir.path() / "tone.wav", 0.3);
    dir.write("text.wav", "this is not a sound\n");
    ScopedEnv server("PULSE_SERVER", "unix:" + (dir.path() / "no-such-socket").string());
    ScopedEnv runtime("XDG_RUNTIME_DIR", dir.path().string());

    EXPECT_EQ(runPlayer({tone.string()}).status, failed);
    EXPECT_EQ(runPlayer({(dir.path() / "missing.wav").string()}).status, failed);
    EXPECT_EQ(runPlayer({(dir.path() / "text.wav").string()}).status, failed);
    EXPECT_EQ(runPlayer({}).status, badUsage);
    EXPECT_EQ(runPlayer({tone.string(), tone.string()}).status, badUsage);
}

// A private PulseAudio daemon with a null sink, so playback runs against a real server.
class LinuxSoundPlayerOnNullSink : public ::testing::Test {
protected:
    static void SetUpTestSuite() {
        runtime = std::make_unique<test::TempDir>();
        const std::string socket = (runtime->path() / "native").string();
        daemon = test::spawnQuietly({"pulseaudio", "-n", "--daemonize=no", "--exit-idle-time=-1",
                                     "--use-pid-file=no", "--load=module-null-sink sink_name=tovrin_test",
                                     "--load=module-native-protocol-unix auth-anonymous=1 socket=" + socket},
                                    {"HOME=" + runtime->path().string(),
                                     "XDG_RUNTIME_DIR=" + runtime->path().string(), "PATH=/usr/bin:/bin"});
        // Up once its socket is there; gone if it ended first.
        test::pollUntil(
            [&] {
                if (daemon > 0 && ::waitpid(daemon, nullptr, WNOHANG) == daemon) daemon = 0;
                return daemon <= 0 || fs::exists(socket);
            },
            10s);
        if (daemon > 0 && fs::exists(socket)) serverAddress = "unix:" + socket;
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
        // Sounds of other runs and of the desktop must not cut these short, nor these them.
        runtimeDir.emplace("XDG_RUNTIME_DIR", dir.path().string());
    }

    static inline std::unique_ptr<test::TempDir> runtime;
    static inline pid_t daemon = 0;
    static inline std::string serverAddress;
    test::TempDir dir;
    std::optional<ScopedEnv> server;
    std::optional<ScopedEnv> runtimeDir;
};

TEST_F(LinuxSoundPlayerOnNullSink, ANewSoundCutsTheOldOneShort) {
    const fs::path longTone = writeTone(dir.path() / "long.wav", 4.0);
    const fs::path shortTone = writeTone(dir.path() / "short.wav", 0.2);
    const pid_t longPlayer = startPlayer({longTone.string()});
    ASSERT_GT(longPlayer, 0);
    // Long enough for it to reach the server, whose start may be slow under load.
    std::this_thread::sleep_for(800ms);

    EXPECT_EQ(runPlayer({shortTone.string()}).status, finished);
    // Its own end comes only after four seconds; being stopped is the proof, not a stopwatch.
    EXPECT_EQ(test::exitStatusOf(longPlayer), interrupted);
}

// The sound theme's files are Ogg Vorbis, decoded by a library loaded for them; a floating-point
// AIFF-C goes through the built-in decoder as a WAV does.
TEST_F(LinuxSoundPlayerOnNullSink, ThePlayerProgramPlaysEachFormatToTheEnd) {
    writeTone(dir.path() / "tone.wav", 0.3);
    std::vector<std::string> names{"tone.wav"};
    if (test::haveProgram("sox")) {
        writeWithSox(dir.path() / "tone.oga", "-r 22050 -c 2 -t ogg");
        writeWithSox(dir.path() / "tone.aifc", "-r 22050 -c 2 -t aifc -e floating-point -b 32");
        names.insert(names.end(), {"tone.oga", "tone.aifc"});
    }
    for (const auto& name : names) {
        const PlayerRun run = runPlayer({(dir.path() / name).string()});
        EXPECT_EQ(run.status, finished) << name;
        // The sink takes samples in real time, so a sound that reached it can't be done much sooner.
        EXPECT_GE(run.took, 200ms) << name;
    }
}

TEST_F(LinuxSoundPlayerOnNullSink, PlayReturnsAtOnceAndTheChildIsReapedWhenTheSoundEnds) {
    const fs::path tone = writeTone(dir.path() / "tone.wav", 0.8);
    LinuxSoundPlayer player("freedesktop", playerProgram);

    const auto started = Steady::now();
    player.play(tone);

    // Still playing after play() returned, so play() did not wait for it; a child that could not
    // play would have ended at once.
    std::this_thread::sleep_for(400ms);
    const auto playing = playerChildren();
    ASSERT_EQ(playing.size(), 1u);
    EXPECT_FALSE(playing[0].ended);

    EXPECT_TRUE(test::pollUntil([] { return playerChildren().empty(); }, 15s))
        << "the player is still running or was left a zombie";
    EXPECT_GE(Steady::now() - started, 700ms);
}

TEST(LinuxSoundPlayer, WithoutThePlayerProgramPlayIsSilent) {
    test::TempDir dir;
    const fs::path tone = writeTone(dir.path() / "tone.wav", 0.3);
    LinuxSoundPlayer missing("freedesktop", dir.path() / "no-such-player");
    LinuxSoundPlayer none("freedesktop", std::nullopt);
    missing.play(tone);
    none.play(tone);
    EXPECT_TRUE(playerChildren().empty());
    EXPECT_TRUE(missing.canDecode(tone));
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
