#include "platform/linux/ChildProcess.h"

#include <array>
#include <cerrno>
#include <csignal>
#include <fcntl.h>
#include <poll.h>
#include <spawn.h>
#include <sys/socket.h>
#include <sys/wait.h>
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

// Closes a descriptor once, when its owner goes.
class Descriptor {
public:
    Descriptor() = default;
    explicit Descriptor(int fd) : m_fd(fd) {}
    ~Descriptor() { reset(); }
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;
    int get() const { return m_fd; }
    int* out() { return &m_fd; }
    void reset() {
        if (m_fd >= 0) ::close(m_fd);
        m_fd = -1;
    }

private:
    int m_fd = -1;
};

// Keeps the last line of error output that holds more than blanks.
class LastLine {
public:
    void feed(std::string_view bytes) {
        for (char c : bytes) {
            if (c == '\n') {
                finish();
            } else if (m_current.size() < maxLength) {
                m_current += static_cast<unsigned char>(c) < ' ' || c == 0x7f ? ' ' : c;
            }
        }
    }
    std::string take() {
        finish();
        return m_last;
    }

private:
    static constexpr std::size_t maxLength = 300;
    void finish() {
        const auto begin = m_current.find_first_not_of(' ');
        if (begin != std::string::npos)
            m_last = m_current.substr(begin, m_current.find_last_not_of(' ') - begin + 1);
        m_current.clear();
    }
    std::string m_current;
    std::string m_last;
};

} // namespace

std::optional<pid_t> spawnChild(const std::filesystem::path& program,
                                const std::vector<std::string>& arguments, std::array<int, 3> standardFiles) {
    SpawnSetup setup;
    if (!setup.ready) return std::nullopt;
    for (int target = 0; target < 3; ++target) {
        const int fd = standardFiles[static_cast<std::size_t>(target)];
        const bool opened =
            fd < 0 ? posix_spawn_file_actions_addopen(&setup.actions, target, "/dev/null",
                                                      target == STDIN_FILENO ? O_RDONLY : O_WRONLY, 0) == 0
                   : posix_spawn_file_actions_adddup2(&setup.actions, fd, target) == 0;
        if (!opened) return std::nullopt;
    }

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
    // A bare name is looked up on the PATH, as a shell would.
    const auto start = program.has_parent_path() ? posix_spawn : posix_spawnp;
    if (start(&pid, path.c_str(), &setup.actions, &setup.attributes, argv.data(), environ) != 0)
        return std::nullopt;
    return pid;
}

int waitForChild(pid_t pid) {
    int status = 0;
    while (::waitpid(pid, &status, 0) < 0 && errno == EINTR) {
    }
    return status;
}

std::optional<FinishedChild> runWithInput(const std::filesystem::path& program,
                                          const std::vector<std::string>& arguments, std::string_view input,
                                          std::size_t outputLimit) {
    // The input goes through a socket: a child that stops reading then fails our send() with EPIPE
    // (MSG_NOSIGNAL) instead of raising SIGPIPE in this process.
    std::array<Descriptor, 2> in, out, err;
    std::array<int, 2> fds{};
    if (::socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, fds.data()) != 0) return std::nullopt;
    *in[0].out() = fds[0];
    *in[1].out() = fds[1];
    for (auto* pipe : {&out, &err}) {
        if (::pipe2(fds.data(), O_CLOEXEC) != 0) return std::nullopt;
        *(*pipe)[0].out() = fds[0];
        *(*pipe)[1].out() = fds[1];
    }
    const auto pid = spawnChild(program, arguments, {in[1].get(), out[1].get(), err[1].get()});
    in[1].reset();
    out[1].reset();
    err[1].reset();
    if (!pid) return std::nullopt;
    ::shutdown(in[0].get(), SHUT_RD);
    if (input.empty()) in[0].reset();

    FinishedChild finished;
    LastLine errors;
    std::array<char, 16384> buffer{};
    while (out[0].get() >= 0 || err[0].get() >= 0) {
        std::array<pollfd, 3> ready{
            {{out[0].get(), POLLIN, 0}, {err[0].get(), POLLIN, 0}, {in[0].get(), POLLOUT, 0}}};
        if (::poll(ready.data(), ready.size(), -1) < 0) {
            if (errno == EINTR) continue;
            break;
        }
        if (ready[2].revents != 0) {
            const ssize_t sent = ::send(in[0].get(), input.data(), input.size(), MSG_NOSIGNAL | MSG_DONTWAIT);
            if (sent > 0) input.remove_prefix(static_cast<std::size_t>(sent));
            if ((sent < 0 && errno != EAGAIN && errno != EINTR) || input.empty()) in[0].reset();
        }
        for (std::size_t i = 0; i < 2; ++i) {
            if (ready[i].revents == 0) continue;
            auto& source = i == 0 ? out[0] : err[0];
            const ssize_t n = ::read(source.get(), buffer.data(), buffer.size());
            if (n < 0 && errno == EINTR) continue;
            if (n <= 0) {
                source.reset();
                continue;
            }
            const std::string_view bytes(buffer.data(), static_cast<std::size_t>(n));
            if (i == 1) {
                errors.feed(bytes);
            } else if (finished.output.size() + bytes.size() > outputLimit) {
                finished.outputTooLarge = true;
                ::kill(*pid, SIGKILL);
                out[0].reset();
            } else {
                finished.output += bytes;
            }
        }
    }
    in[0].reset();
    const int status = waitForChild(*pid);
    finished.exitStatus = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    finished.errorLine = errors.take();
    return finished;
}

} // namespace tovrin
