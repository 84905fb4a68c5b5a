#pragma once

#include <cstdlib>
#include <string>
#include <vector>

namespace tovrin {

// How ssh is run: the program (found on the PATH unless a path) and options placed before ours,
// such as "-F <config>".
struct SshCommand {
    std::string program = "ssh";
    std::vector<std::string> options;

    // ssh, or TOVRIN_SSH when set: like git's GIT_SSH, a wrapper or another build of ssh, taking
    // ssh's arguments.
    static SshCommand fromEnvironment() {
        SshCommand ssh;
        if (const char* program = std::getenv("TOVRIN_SSH"); program && *program) ssh.program = program;
        return ssh;
    }

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
