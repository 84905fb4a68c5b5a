#include "platform/linux/PosixProcessRunner.h"

#include <array>
#include <cerrno>
#include <chrono>
#include <csignal>
#include <fcntl.h>
#include <optional>
#include <poll.h>
#include <spawn.h>
#include <sys/wait.h>
#include <system_error>
#include <thread>
#include <unistd.h>

extern char** environ;

namespace tovrin {
namespace {

// Owns the spawn attribute objects for the length of one call.
struct SpawnSetup {
    posix_spawn_file_actions_t actions{};
    posix_spawnattr_t attributes{};
    bool ready = false;

    SpawnSetup() {
        if (posix_spawn_file_actions_init(&actions) != 0) return;
        if (posix_spawnattr_init(&attributes) != 0) {
            posix_spawn_file_actions_destroy(&actions);
            return;
        }
        ready = true;
    }
    ~SpawnSetup() {
        if (!ready) return;
        posix_spawnattr_destroy(&attributes);
        posix_spawn_file_actions_destroy(&actions);
    }
    SpawnSetup(const SpawnSetup&) = delete;
    SpawnSetup& operator=(const SpawnSetup&) = delete;
};

int waitFor(pid_t pid) {
    int status = 0;
    while (::waitpid(pid, &status, 0) < 0 && errno == EINTR) {
    }
    return status;
}

// Spawns the program with standard error to /dev/null and standard output to `out`, or to
// /dev/null when it is -1.
std::optional<pid_t> spawn(const std::filesystem::path& program, const std::vector<std::string>& arguments,
                           int out) {
    SpawnSetup setup;
    if (!setup.ready) return std::nullopt;
    const bool outOpened =
        out < 0
            ? posix_spawn_file_actions_addopen(&setup.actions, STDOUT_FILENO, "/dev/null", O_WRONLY, 0) == 0
            : posix_spawn_file_actions_adddup2(&setup.actions, out, STDOUT_FILENO) == 0;
    if (!outOpened ||
        posix_spawn_file_actions_addopen(&setup.actions, STDERR_FILENO, "/dev/null", O_WRONLY, 0) != 0)
        return std::nullopt;

    // The caller may be a worker thread with signals blocked or ignored; the child starts clean.
    sigset_t noSignals;
    sigemptyset(&noSignals);
    sigset_t defaults;
    sigemptyset(&defaults);
    sigaddset(&defaults, SIGPIPE);
    sigaddset(&defaults, SIGCHLD);
    posix_spawnattr_setsigmask(&setup.attributes, &noSignals);
    posix_spawnattr_setsigdefault(&setup.attributes, &defaults);
    posix_spawnattr_setflags(&setup.attributes, POSIX_SPAWN_SETSIGMASK | POSIX_SPAWN_SETSIGDEF);

    const std::string path = program.string();
    std::vector<std::string> storage;
    storage.reserve(arguments.size() + 1);
    storage.push_back(path);
    storage.insert(storage.end(), arguments.begin(), arguments.end());
    std::vector<char*> argv;
    argv.reserve(storage.size() + 1);
    for (std::string& argument : storage)
        argv.push_back(argument.data());
    argv.push_back(nullptr);

    pid_t pid = 0;
    if (posix_spawn(&pid, path.c_str(), &setup.actions, &setup.attributes, argv.data(), environ) != 0)
        return std::nullopt;
    return pid;
}

// Reads until end of file, giving up at the deadline or beyond a sane size; false then.
bool readAll(int fd, std::string& text) {
    constexpr std::size_t maxSize = 1 << 20;
    const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(3);
    std::array<char, 4096> buffer{};
    while (text.size() < maxSize) {
        const auto left = std::chrono::duration_cast<std::chrono::milliseconds>(
            deadline - std::chrono::steady_clock::now());
        if (left.count() <= 0) return false;
        pollfd ready{fd, POLLIN, 0};
        const int polled = ::poll(&ready, 1, static_cast<int>(left.count()));
        if (polled < 0 && errno == EINTR) continue;
        if (polled <= 0) return false;
        const ssize_t n = ::read(fd, buffer.data(), buffer.size());
        if (n < 0 && errno == EINTR) continue;
        if (n < 0) return false;
        if (n == 0) return true;
        text.append(buffer.data(), static_cast<std::size_t>(n));
    }
    return false;
}

} // namespace

bool PosixProcessRunner::start(const std::filesystem::path& program,
                               const std::vector<std::string>& arguments) {
    const std::optional<pid_t> pid = spawn(program, arguments, -1);
    if (!pid) return false;
    try {
        std::thread([pid = *pid] { waitFor(pid); }).detach();
    } catch (const std::system_error&) {
        // No thread to spare: the child still runs; it stays a zombie until we exit.
    }
    return true;
}

std::optional<std::string> PosixProcessRunner::output(const std::filesystem::path& program,
                                                      const std::vector<std::string>& arguments) {
    std::array<int, 2> pipe{};
    if (::pipe2(pipe.data(), O_CLOEXEC) != 0) return std::nullopt;
    const std::optional<pid_t> pid = spawn(program, arguments, pipe[1]);
    ::close(pipe[1]);
    std::string text;
    const bool complete = pid && readAll(pipe[0], text);
    ::close(pipe[0]);
    if (!pid) return std::nullopt;
    if (!complete) ::kill(*pid, SIGKILL);
    const int status = waitFor(*pid);
    if (!complete || !WIFEXITED(status) || WEXITSTATUS(status) != 0) return std::nullopt;
    return text;
}

} // namespace tovrin
