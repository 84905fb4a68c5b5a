#pragma once

#include <filesystem>
#include <string>
#include <vector>

namespace tovrin {

// Starts an outside program and does not wait for it: output goes nowhere, and the child is
// reaped in the background. Returns whether it could be started.
class ProcessRunner {
public:
    virtual ~ProcessRunner() = default;
    virtual bool start(const std::filesystem::path& program, const std::vector<std::string>& arguments) = 0;
};

} // namespace tovrin
