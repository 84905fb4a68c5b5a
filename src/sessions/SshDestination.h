#pragma once

#include <algorithm>
#include <cstdlib>
#include <optional>
#include <string>
#include <string_view>

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

// The program that runs ssh: $TOVRIN_SSH when set (a wrapper or another build, like git's GIT_SSH,
// taking ssh's arguments), else ssh from the PATH.
inline std::string sshProgram() {
    const char* program = std::getenv("TOVRIN_SSH");
    return program && *program ? program : "ssh";
}

} // namespace tovrin
