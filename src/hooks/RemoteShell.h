#pragma once

#include "core/Result.h"

#include <string>

namespace tovrin {

// A POSIX sh on another machine, given a whole script as its standard input and waited for.
class RemoteShell {
public:
    struct Outcome {
        int exitStatus = 0;
        std::string output;
        std::string errorLine; // the last line it wrote on its error output
    };

    virtual ~RemoteShell() = default;
    // The host as the user named it, for messages.
    virtual const std::string& host() const = 0;
    // Fails only when the script could not be run there at all, with the connection's own words.
    virtual Result<Outcome> run(const std::string& script) = 0;
};

} // namespace tovrin
