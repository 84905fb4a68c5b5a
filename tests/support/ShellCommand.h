#pragma once

#include <array>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <sys/wait.h>

namespace tovrin::test {

struct CommandResult {
    int exitCode = -1; // -1 when it could not start or did not exit on its own
    std::string out;   // standard output without its final line feeds
};

// Runs a shell command line to its end; its output exactly as written.
inline CommandResult runCommandVerbatim(const std::string& command) {
    CommandResult result;
    FILE* pipe = ::popen(command.c_str(), "r");
    if (!pipe) return result;
    std::array<char, 4096> buffer{};
    while (const auto n = std::fread(buffer.data(), 1, buffer.size(), pipe))
        result.out.append(buffer.data(), n);
    const int status = ::pclose(pipe);
    result.exitCode = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    return result;
}

// Runs a shell command line to its end; its output without the final line feeds.
inline CommandResult runCommand(const std::string& command) {
    CommandResult result = runCommandVerbatim(command);
    while (result.out.ends_with('\n'))
        result.out.pop_back();
    return result;
}

// Whether a program of that name is on the PATH; tests that need one skip without it.
inline bool haveProgram(const std::string& name) {
    return std::system(("command -v '" + name + "' >/dev/null 2>&1").c_str()) == 0;
}

} // namespace tovrin::test
