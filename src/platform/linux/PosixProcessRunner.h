#pragma once

#include "focus/ProcessRunner.h"

namespace tovrin {

// Starts programs with posix_spawn: standard output and error to /dev/null, standard input and
// environment inherited. A detached thread per child waits for it, so none is left a zombie and
// the caller never waits.
class PosixProcessRunner final : public ProcessRunner {
public:
    bool start(const std::filesystem::path& program, const std::vector<std::string>& arguments) override;
};

} // namespace tovrin
