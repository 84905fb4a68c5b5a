#pragma once

#include "support/ShellCommand.h"
#include "support/TempDir.h"

#include <filesystem>
#include <string>

namespace tovrin::test {

using Output = CommandResult;

// Runs a shell command line with the built executable as $TOVRIN, a private home and status
// folder; returns its standard output.
inline Output runShell(const std::string& script, const TempDir& home,
                       const std::filesystem::path& statusDir) {
    const std::string command = "export HOME='" + home.path().string() + "' XDG_CONFIG_HOME='" +
                                (home.path() / ".config").string() + "' AGENT_STATUS_DIR='" +
                                statusDir.string() + "' TOVRIN='" + TOVRIN_EXECUTABLE + "'; " + script +
                                " 2>/dev/null";
    return runCommandVerbatim(command);
}

inline Output runTovrin(const std::string& args, const TempDir& home,
                        const std::filesystem::path& statusDir) {
    return runShell("\"$TOVRIN\" " + args, home, statusDir);
}

} // namespace tovrin::test
