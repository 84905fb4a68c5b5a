#include "platform/linux/PosixProcessRunner.h"

#include "platform/linux/ChildProcess.h"

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
    const std::optional<pid_t> pid = spawnChild(program, arguments, {-1, -1, -1});
    if (!pid) return false;
    try {
        std::thread([pid = *pid] { waitForChild(pid); }).detach();
    } catch (const std::system_error&) {
        // No thread to spare: the child still runs; it stays a zombie until we exit.
    }
    return true;
}

std::optional<std::string> PosixProcessRunner::output(const std::filesystem::path& program,
                                                      const std::vector<std::string>& arguments) {
    std::array<int, 2> pipe{};
    if (::pipe2(pipe.data(), O_CLOEXEC) != 0) return std::nullopt;
    const std::optional<pid_t> pid = spawnChild(program, arguments, {-1, pipe[1], -1});
    ::close(pipe[1]);
    std::string text;
    const bool complete = pid && readAll(pipe[0], text);
    ::close(pipe[0]);
    if (!pid) return std::nullopt;
    if (!complete) ::kill(*pid, SIGKILL);
    const int status = waitForChild(*pid);
    if (!complete || !WIFEXITED(status) || WEXITSTATUS(status) != 0) return std::nullopt;
    return text;
}

} // namespace tovrin
