#pragma once

#include "support/TempDir.h"

#include <array>
#include <cstdio>
#include <filesystem>
#include <string>
#include <sys/wait.h>

namespace tovrin::test {

struct Output {
    int exitCode = -1;
    std::string out;
};

// Runs a shell command line with the built executable as $TOVRIN, a private home and status
// folder; returns its standard output.
inline Output runShell(const std::string& script, const TempDir& home,
                       const std::filesystem::path& statusDir) {
    const std::string command = "export HOME='" + home.path().string() + "' XDG_CONFIG_HOME='" +
                                (home.path() / ".config").string() + "' AGENT_STATUS_DIR='" +
                                statusDir.string() + "' TOVRIN='" + TOVRIN_EXECUTABLE + "'; " + script +
                                " 2>/dev/null";
    Output result;
    FILE* pipe = ::popen(command.c_str(), "r");
    if (!pipe) return result;
    std::array<char, 4096> buffer{};
    while (const auto n = std::fread(buffer.data(), 1, buffer.size(), pipe))
        result.out.append(buffer.data(), n);
    const int status = ::pclose(pipe);
    result.exitCode = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    return result;
}

inline Output runTovrin(const std::string& args, const TempDir& home,
                        const std::filesystem::path& statusDir) {
    return runShell("\"$TOVRIN\" " + args, home, statusDir);
}

} // namespace tovrin::test
