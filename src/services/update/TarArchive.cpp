#include "services/update/TarArchive.h"

#include <array>
#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <poll.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

extern char** environ;

namespace tovrin::TarArchive {
namespace {

struct Finished {
    int status = -1; // the exit status; -1 when a signal ended it
    std::string out;
    std::string err;
};

class Pipe {
public:
    Pipe() {
        if (::pipe2(m_ends.data(), O_CLOEXEC) != 0) m_ends = {-1, -1};
    }
    Pipe(const Pipe&) = delete;
    Pipe& operator=(const Pipe&) = delete;
    ~Pipe() {
        closeRead();
        closeWrite();
    }
    bool ok() const { return m_ends[0] >= 0; }
    int read() const { return m_ends[0]; }
    int write() const { return m_ends[1]; }
    void closeRead() { closeEnd(0); }
    void closeWrite() { closeEnd(1); }

private:
    void closeEnd(std::size_t i) {
        if (m_ends[i] >= 0) ::close(m_ends[i]);
        m_ends[i] = -1;
    }
    std::array<int, 2> m_ends{-1, -1};
};

// Reads both pipes to their end together, so that a child filling one never blocks on it.
void drain(Pipe& out, Pipe& err, Finished& finished) {
    std::array<pollfd, 2> fds{pollfd{out.read(), POLLIN, 0}, pollfd{err.read(), POLLIN, 0}};
    std::array<std::string*, 2> sinks{&finished.out, &finished.err};
    std::array<char, 65536> buffer{};
    while (fds[0].fd >= 0 || fds[1].fd >= 0) {
        if (::poll(fds.data(), fds.size(), -1) < 0) {
            if (errno == EINTR) continue;
            return;
        }
        for (std::size_t i = 0; i < fds.size(); ++i) {
            if (fds[i].fd < 0 || fds[i].revents == 0) continue;
            const ssize_t n = ::read(fds[i].fd, buffer.data(), buffer.size());
            if (n > 0)
                sinks[i]->append(buffer.data(), static_cast<std::size_t>(n));
            else if (n == 0 || errno != EINTR)
                fds[i].fd = -1;
        }
    }
}

Result<Finished, std::string> runTar(std::vector<std::string> arguments) {
    using R = Result<Finished, std::string>;
    Pipe out;
    Pipe err;
    if (!out.ok() || !err.ok()) return R::failure(std::string("cannot start tar: ") + std::strerror(errno));

    arguments.insert(arguments.begin(), "tar");
    std::vector<char*> argv;
    for (std::string& argument : arguments)
        argv.push_back(argument.data());
    argv.push_back(nullptr);

    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_addopen(&actions, STDIN_FILENO, "/dev/null", O_RDONLY, 0);
    posix_spawn_file_actions_adddup2(&actions, out.write(), STDOUT_FILENO);
    posix_spawn_file_actions_adddup2(&actions, err.write(), STDERR_FILENO);
    pid_t pid = -1;
    const int spawned = ::posix_spawnp(&pid, "tar", &actions, nullptr, argv.data(), environ);
    posix_spawn_file_actions_destroy(&actions);
    out.closeWrite();
    err.closeWrite();
    if (spawned != 0) return R::failure(std::string("cannot start tar: ") + std::strerror(spawned));

    Finished finished;
    drain(out, err, finished);
    int status = 0;
    while (::waitpid(pid, &status, 0) < 0) {
        if (errno != EINTR) return R::failure(std::string("lost track of tar: ") + std::strerror(errno));
    }
    finished.status = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    return finished;
}

// tar's first line on its error output, which names the cause (later ones tell that it gave up); its
// exit status when it said nothing.
std::string complaint(const Finished& finished) {
    std::string_view text = finished.err;
    while (!text.empty() && (text.front() == '\n' || text.front() == ' '))
        text.remove_prefix(1);
    text = text.substr(0, text.find('\n'));
    if (!text.empty()) return std::string(text);
    if (finished.status < 0) return "tar was stopped by a signal.";
    return "tar ended with status " + std::to_string(finished.status) + ".";
}

} // namespace

Result<std::vector<std::string>, std::string> members(const std::filesystem::path& archive) {
    using R = Result<std::vector<std::string>, std::string>;
    auto finished = runTar({"--list", "--gzip", "--force-local", "--file", archive.string()});
    if (!finished) return R::failure(finished.error());
    if (finished.value().status != 0) return R::failure(complaint(finished.value()));
    std::vector<std::string> names;
    std::string_view rest = finished.value().out;
    while (!rest.empty()) {
        const std::size_t newline = rest.find('\n');
        if (newline > 0) names.emplace_back(rest.substr(0, newline));
        if (newline == std::string_view::npos) break;
        rest.remove_prefix(newline + 1);
    }
    return names;
}

bool staysInside(std::string_view member) {
    if (member.starts_with('/')) return false;
    while (true) {
        const std::size_t slash = member.find('/');
        if (member.substr(0, slash) == "..") return false;
        if (slash == std::string_view::npos) return true;
        member.remove_prefix(slash + 1);
    }
}

Result<void, std::string> extract(const std::filesystem::path& archive, const std::filesystem::path& folder) {
    using R = Result<void, std::string>;
    auto finished = runTar({"--extract", "--gzip", "--force-local", "--no-same-owner", "--file",
                            archive.string(), "--directory", folder.string()});
    if (!finished) return R::failure(finished.error());
    if (finished.value().status != 0) return R::failure(complaint(finished.value()));
    return {};
}

} // namespace tovrin::TarArchive
