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
inline constexpr std::array<std::string_view, 6> fixedProgramFolders{
    "/opt/homebrew/bin", "/usr/local/bin", "/usr/bin", "/bin", "/usr/sbin", "/sbin"};

// Where a program name leads: an absolute name stands for itself if executable; any other name
// is looked for in the fixed folders, then in the entries of `pathVariable`, the first executable
// file winning.
std::optional<std::string> resolveProgram(const std::string& name,
                                          const std::optional<std::string>& pathVariable,
                                          const std::function<bool(const std::string&)>& isExecutable);

// A value made safe to put between double quotes in a script: backslashes doubled, then quotes
// escaped.
std::string escapeForScript(std::string_view value);

// Selects the Terminal tab whose device is `tty`.
std::string terminalScript(std::string_view tty);

// Selects the iTerm session with the given id; only the part after the last ":" is compared.
std::string iTermScript(std::string_view sessionId);

// Starts outside programs found by name, and runs scripts where the desktop has a script host.
class ShellRunner {
public:
    using PathSource = std::function<std::optional<std::string>()>;
    using ExecutableTest = std::function<bool(const std::string&)>;

    // By default PATH is read from the environment at each call, and the file test is the real one.
    explicit ShellRunner(ProcessRunner& runner, PathSource path = {}, ExecutableTest isExecutable = {});
    virtual ~ShellRunner() = default;
    ShellRunner(const ShellRunner&) = delete;
    ShellRunner& operator=(const ShellRunner&) = delete;

    std::optional<std::string> resolve(const std::string& name) const;
    // True as soon as the program has started; does not wait for it.
    bool run(const std::string& program, const std::vector<std::string>& arguments);
    // No scripting host for other applications here: always false, so callers go on to their
    // next attempt.
    virtual bool appleScript(const std::string& script);

private:
    ProcessRunner& m_runner;
    PathSource m_path;
    ExecutableTest m_isExecutable;
};

} // namespace tovrin
