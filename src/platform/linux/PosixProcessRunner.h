#pragma once

#include "focus/ProcessRunner.h"

namespace tovrin {

// Starts programs with posix_spawn, standard error to /dev/null, standard input and environment
// inherited. `start` sends standard output to /dev/null too, and a detached thread per child waits
// for it, so none is left a zombie and the caller never waits.
class PosixProcessRunner final : public ProcessRunner {
public:
    bool start(const std::filesystem::path& program, const std::vector<std::string>& arguments) override;
    std::optional<std::string> output(const std::filesystem::path& program,
                                      const std::vector<std::string>& arguments) override;
};

} // namespace tovrin
