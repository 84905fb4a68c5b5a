#pragma once

#include <algorithm>
#include <cstdlib>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tovrin {

// Why ssh could not take the text as a destination and nothing else (it would read a leading '-'
// as an option; blanks and control characters split or hide it); nothing when it can.
inline std::optional<std::string> sshDestinationProblem(std::string_view destination) {
    const std::string host(destination);
    if (host.empty()) return "No host given.";
    if (host.front() == '-') return "\"" + host + "\" would be read by ssh as an option.";
    if (!std::all_of(host.begin(), host.end(), [](unsigned char c) { return c > 0x20 && c != 0x7f; }))
        return "\"" + host + "\" holds blanks or control characters.";
    return std::nullopt;
}

// How ssh is run: the program (found on the PATH unless a path) and options placed before ours,
// such as "-F <config>".
struct SshCommand {
    std::string program = "ssh";
    std::vector<std::string> options;

    // ssh, or the program $TOVRIN_SSH names: like git's GIT_SSH, a wrapper or another build of ssh,
    // taking ssh's arguments.
    static SshCommand fromEnvironment() {
        const char* program = std::getenv("TOVRIN_SSH");
        return {program && *program ? program : "ssh", {}};
    }

    // The arguments that run one command line on the destination. Never a prompt.
    std::vector<std::string> remoteCommand(const std::string& destination, const std::string& command) const {
        return withOptions({}, {destination, command});
    }

    // The arguments that run `sh -s` on the destination, reading its script from our input; a dead
    // connection is noticed within a minute by ssh's own keep-alives.
    std::vector<std::string> remoteShell(const std::string& destination) const {
        return withOptions({"-o", "ServerAliveInterval=15", "-o", "ServerAliveCountMax=3"},
                           {destination, "sh", "-s"});
    }

private:
    std::vector<std::string> withOptions(std::vector<std::string> more,
                                         std::vector<std::string> target) const {
        std::vector<std::string> arguments = {"-T", "-o", "BatchMode=yes", "-o", "ConnectTimeout=10"};
        arguments.insert(arguments.end(), more.begin(), more.end());
        arguments.insert(arguments.end(), options.begin(), options.end());
        arguments.insert(arguments.end(), target.begin(), target.end());
        return arguments;
    }
};

} // namespace tovrin
