#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

namespace tovrin {

// Starts outside programs: either without waiting (output goes nowhere, the child is reaped in the
// background), or waiting for what a short query prints.
class ProcessRunner {
public:
    virtual ~ProcessRunner() = default;
    // Whether the program could be started.
    virtual bool start(const std::filesystem::path& program, const std::vector<std::string>& arguments) = 0;
    // What the program wrote to its standard output, when it ended successfully within a few
    // seconds; a program that hangs is killed and answers nothing.
    virtual std::optional<std::string> output(const std::filesystem::path& program,
                                              const std::vector<std::string>& arguments) = 0;
};

} // namespace tovrin
