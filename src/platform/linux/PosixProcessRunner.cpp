#include "platform/linux/PosixProcessRunner.h"

#include <cerrno>
#include <csignal>
#include <fcntl.h>
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

} // namespace

bool PosixProcessRunner::start(const std::filesystem::path& program,
                               const std::vector<std::string>& arguments) {
    SpawnSetup setup;
    if (!setup.ready) return false;
    if (posix_spawn_file_actions_addopen(&setup.actions, STDOUT_FILENO, "/dev/null", O_WRONLY, 0) != 0 ||
        posix_spawn_file_actions_addopen(&setup.actions, STDERR_FILENO, "/dev/null", O_WRONLY, 0) != 0)
        return false;

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
        return false;

    try {
        std::thread([pid] {
            int status = 0;
            while (::waitpid(pid, &status, 0) < 0 && errno == EINTR) {
            }
        }).detach();
    } catch (const std::system_error&) {
        // No thread to spare: the child still runs; it stays a zombie until we exit.
    }
    return true;
}

} // namespace tovrin
