#pragma once

#include "focus/ProcessRunner.h"

#include <array>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tovrin {

// Folders searched for a program before those of PATH, in this order.
inline constexpr std::array<std::string_view, 5> fixedProgramFolders{"/usr/local/bin", "/usr/bin", "/bin",
                                                                     "/usr/sbin", "/sbin"};

// Where a program name leads: an absolute name stands for itself if executable; any other name
// is looked for in the fixed folders, then in the entries of `pathVariable`, the first executable
// file winning.
std::optional<std::string> resolveProgram(const std::string& name,
                                          const std::optional<std::string>& pathVariable,
                                          const std::function<bool(const std::string&)>& isExecutable);

// Starts outside programs found by name.
class ShellRunner {
public:
    using PathSource = std::function<std::optional<std::string>()>;
    using ExecutableTest = std::function<bool(const std::string&)>;

    // By default PATH is read from the environment at each call, and the file test is the real one.
    explicit ShellRunner(ProcessRunner& runner, PathSource path = {}, ExecutableTest isExecutable = {});
    ShellRunner(const ShellRunner&) = delete;
    ShellRunner& operator=(const ShellRunner&) = delete;

    std::optional<std::string> resolve(const std::string& name) const;
    // True as soon as the program has started; does not wait for it.
    bool run(const std::string& program, const std::vector<std::string>& arguments);
    // What the program printed, waiting for it; nothing when it is missing or failed.
    std::optional<std::string> output(const std::string& program, const std::vector<std::string>& arguments);

private:
    ProcessRunner& m_runner;
    PathSource m_path;
    ExecutableTest m_isExecutable;
};

} // namespace tovrin
