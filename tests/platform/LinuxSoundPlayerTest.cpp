#include "platform/audio/LinuxSoundPlayer.h"

#include "support/ScopedEnv.h"
#include "support/TempDir.h"

#include <chrono>
#include <cmath>
#include <csignal>
#include <cstdint>
#include <cstdlib>
#include <fcntl.h>
#include <fstream>
#include <gtest/gtest.h>
#include <numbers>
#include <optional>
#include <spawn.h>
#include <sstream>
#include <string>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>
#include <vector>

extern char** environ;

namespace tovrin {
namespace {

namespace fs = std::filesystem;
using namespace std::chrono_literals;
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

const fs::path playerProgram = TOVRIN_PLAY_EXECUTABLE;

// tovrin-play's exit statuses.
constexpr int finished = 0;
constexpr int failed = 1;
constexpr int badUsage = 2;
constexpr int interrupted = 3;

// Starts tovrin-play with its output to /dev/null, as the app does.
pid_t startPlayer(const std::vector<std::string>& arguments) {
    std::vector<std::string> storage{playerProgram.string()};
    storage.insert(storage.end(), arguments.begin(), arguments.end());
    std::vector<char*> argv;
    for (auto& argument : storage)
        argv.push_back(argument.data());
    argv.push_back(nullptr);
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_addopen(&actions, STDOUT_FILENO, "/dev/null", O_WRONLY, 0);
    posix_spawn_file_actions_addopen(&actions, STDERR_FILENO, "/dev/null", O_WRONLY, 0);
    pid_t pid = 0;
    const int error = ::posix_spawn(&pid, argv[0], &actions, nullptr, argv.data(), environ);
    posix_spawn_file_actions_destroy(&actions);
    return error == 0 ? pid : -1;
}

// The exit status of a started player, or -1 if it was killed or could not be started.
int exitStatus(pid_t pid) {
    int status = 0;
    if (pid <= 0 || ::waitpid(pid, &status, 0) != pid || !WIFEXITED(status)) return -1;
    return WEXITSTATUS(status);
}

struct PlayerRun {
    int status;
    Steady::duration took;
};

PlayerRun runPlayer(const std::vector<std::string>& arguments) {
    const auto started = Steady::now();
    const int status = exitStatus(startPlayer(arguments));
    return {status, Steady::now() - started};
}

// This process's tovrin-play children and whether each has ended unreaped (a zombie).
std::vector<std::pair<int, bool>> playerChildren() {
    std::vector<std::pair<int, bool>> children;
    for (const auto& entry : fs::directory_iterator("/proc")) {
        std::ifstream stat(entry.path() / "stat");
        std::string line;
        if (!std::getline(stat, line)) continue;
        const std::size_t open = line.find('(');
        const std::size_t close = line.rfind(')');
        if (open == std::string::npos || close == std::string::npos) continue;
        std::istringstream rest(line.substr(close + 1));
        char state = 0;
        int parent = 0;
        rest >> state >> parent;
        if (parent == ::getpid() && line.substr(open + 1, close - open - 1) == "tovrin-play")
            children.emplace_back(std::stoi(line), state == 'Z');
    }
    return children;
}

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

TEST_F(LinuxSoundPlayerOnNullSink, ThePlayerProgramPlaysToTheEnd) {
    const fs::path tone = writeTone(dir.path() / "tone.wav", 0.6);
    const PlayerRun run = runPlayer({tone.string()});
    EXPECT_EQ(run.status, finished);
    // The sink takes samples in real time, so a sound that reached it can't be done much sooner.
    EXPECT_GE(run.took, 400ms);
}

TEST_F(LinuxSoundPlayerOnNullSink, ANewSoundCutsTheOldOneShort) {
    const fs::path longTone = writeTone(dir.path() / "long.wav", 4.0);
    const fs::path shortTone = writeTone(dir.path() / "short.wav", 0.2);
    const pid_t longPlayer = startPlayer({longTone.string()});
    ASSERT_GT(longPlayer, 0);
    // Long enough for it to reach the server, whose start may be slow under load.
    std::this_thread::sleep_for(800ms);

    EXPECT_EQ(runPlayer({shortTone.string()}).status, finished);
    // Its own end comes only after four seconds; being stopped is the proof, not a stopwatch.
    EXPECT_EQ(exitStatus(longPlayer), interrupted);
}

// The sound theme's files are Ogg Vorbis, decoded by a library loaded for them; a floating-point
// AIFF-C goes through the built-in decoder.
TEST_F(LinuxSoundPlayerOnNullSink, PlaysOggVorbisAndAiffToTheEnd) {
    if (!haveSox()) GTEST_SKIP() << "sox is not installed";
    for (const auto& [name, type] :
         {std::pair("tone.oga", "-t ogg"), std::pair("tone.aifc", "-t aifc -e floating-point -b 32")}) {
        const fs::path file = dir.path() / name;
        const std::string command =
            std::string("sox -q -n -r 22050 -c 2 ") + type + " '" + file.string() + "' synth 0.3 sine 440";
        ASSERT_EQ(std::system(command.c_str()), 0) << command;
        const PlayerRun run = runPlayer({file.string()});
        EXPECT_EQ(run.status, finished) << name;
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
    EXPECT_FALSE(playing[0].second);

    const auto deadline = Steady::now() + 15s;
    while (!playerChildren().empty() && Steady::now() < deadline)
        std::this_thread::sleep_for(20ms);
    EXPECT_TRUE(playerChildren().empty()) << "the player is still running or was left a zombie";
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
