#include "focus/ShellRunner.h"

#include <cstdlib>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>

namespace tovrin {
namespace {

bool isExecutableFile(const std::string& path) {
    struct stat info {};
    return ::stat(path.c_str(), &info) == 0 && S_ISREG(info.st_mode) && ::access(path.c_str(), X_OK) == 0;
}

std::optional<std::string> environmentPath() {
    if (const char* value = std::getenv("PATH")) return std::string(value);
    return std::nullopt;
}

} // namespace

std::optional<std::string> resolveProgram(const std::string& name,
                                          const std::optional<std::string>& pathVariable,
                                          const std::function<bool(const std::string&)>& isExecutable) {
    if (name.starts_with('/')) return isExecutable(name) ? std::optional(name) : std::nullopt;

    std::vector<std::string> folders(fixedProgramFolders.begin(), fixedProgramFolders.end());
    if (pathVariable) {
        std::string_view rest = *pathVariable;
        while (true) {
            const std::size_t colon = rest.find(':');
            const std::string_view entry = rest.substr(0, colon);
            if (!entry.empty()) folders.emplace_back(entry);
            if (colon == std::string_view::npos) break;
            rest.remove_prefix(colon + 1);
        }
    }
    for (const std::string& folder : folders) {
        std::string candidate = folder + "/" + name;
        if (isExecutable(candidate)) return candidate;
    }
    return std::nullopt;
}

ShellRunner::ShellRunner(ProcessRunner& runner, PathSource path, ExecutableTest isExecutable)
    : m_runner(runner), m_path(path ? std::move(path) : PathSource(environmentPath)),
      m_isExecutable(isExecutable ? std::move(isExecutable) : ExecutableTest(isExecutableFile)) {}

std::optional<std::string> ShellRunner::resolve(const std::string& name) const {
    return resolveProgram(name, m_path(), m_isExecutable);
}

bool ShellRunner::run(const std::string& program, const std::vector<std::string>& arguments) {
    const std::optional<std::string> path = resolve(program);
    return path && m_runner.start(*path, arguments);
}

std::optional<std::string> ShellRunner::output(const std::string& program,
                                               const std::vector<std::string>& arguments) {
    const std::optional<std::string> path = resolve(program);
    return path ? m_runner.output(*path, arguments) : std::nullopt;
}

} // namespace tovrin
