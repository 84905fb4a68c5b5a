#pragma once

#include <fcntl.h>
#include <filesystem>
#include <fstream>
#include <spawn.h>
#include <sstream>
#include <string>
#include <sys/wait.h>
#include <unistd.h>
#include <vector>

extern char** environ;

namespace tovrin::test {

struct ChildProcess {
    int pid = 0;
    std::string name;
    bool ended = false; // ended and not reaped: a zombie
};

// This process's children, as /proc tells them.
inline std::vector<ChildProcess> childProcesses() {
    std::vector<ChildProcess> children;
    for (const auto& entry : std::filesystem::directory_iterator("/proc")) {
        std::ifstream stat(entry.path() / "stat");
        std::string line;
        if (!std::getline(stat, line)) continue;
        // "pid (comm) state ppid ...": comm may hold blanks and parentheses, so read after the last ')'.
        const std::size_t open = line.find('(');
        const std::size_t close = line.rfind(')');
        if (open == std::string::npos || close == std::string::npos) continue;
        std::istringstream rest(line.substr(close + 1));
        char state = 0;
        int parent = 0;
        rest >> state >> parent;
        if (parent == ::getpid())
            children.push_back({std::stoi(line), line.substr(open + 1, close - open - 1), state == 'Z'});
    }
    return children;
}

// Starts a program found on the PATH, with its output and errors to /dev/null and the given
// environment (this process's when empty); its pid, or -1.
inline pid_t spawnQuietly(std::vector<std::string> argv, std::vector<std::string> env = {}) {
    const auto pointers = [](std::vector<std::string>& strings) {
        std::vector<char*> list;
        for (auto& s : strings)
            list.push_back(s.data());
        list.push_back(nullptr);
        return list;
    };
    auto args = pointers(argv);
    auto envp = pointers(env);
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_addopen(&actions, STDOUT_FILENO, "/dev/null", O_WRONLY, 0);
    posix_spawn_file_actions_addopen(&actions, STDERR_FILENO, "/dev/null", O_WRONLY, 0);
    pid_t pid = 0;
    const int error =
        ::posix_spawnp(&pid, args[0], &actions, nullptr, args.data(), env.empty() ? environ : envp.data());
    posix_spawn_file_actions_destroy(&actions);
    return error == 0 ? pid : -1;
}

// Waits for a started child; its exit status, or -1 if it was killed or never started.
inline int exitStatusOf(pid_t pid) {
    int status = 0;
    if (pid <= 0 || ::waitpid(pid, &status, 0) != pid || !WIFEXITED(status)) return -1;
    return WEXITSTATUS(status);
}

} // namespace tovrin::test
