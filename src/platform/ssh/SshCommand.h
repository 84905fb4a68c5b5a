#pragma once

#include "sessions/SshDestination.h"

#include <string>
#include <vector>

namespace tovrin {

// How ssh is run: the program (found on the PATH unless a path) and options placed before ours,
// such as "-F <config>".
struct SshCommand {
    std::string program = "ssh";
    std::vector<std::string> options;

    // ssh, or the program TOVRIN_SSH names.
    static SshCommand fromEnvironment() { return {sshProgram(), {}}; }

    // The arguments that run `sh -s` on the destination, reading its script from our input. Never
    // a prompt; a dead connection noticed within a minute by ssh's own keep-alives.
    std::vector<std::string> remoteShell(const std::string& destination) const {
        std::vector<std::string> arguments = {"-T"};
        for (const char* option :
             {"BatchMode=yes", "ConnectTimeout=10", "ServerAliveInterval=15", "ServerAliveCountMax=3"})
            arguments.insert(arguments.end(), {"-o", option});
        arguments.insert(arguments.end(), options.begin(), options.end());
        arguments.insert(arguments.end(), {destination, "sh", "-s"});
        return arguments;
    }
};

} // namespace tovrin
