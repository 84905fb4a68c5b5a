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

std::string joinLines(std::initializer_list<std::string_view> lines) {
    std::string text;
    for (const std::string_view line : lines) {
        if (!text.empty()) text += '\n';
        text += line;
    }
    return text;
}

void replaceAll(std::string& text, std::string_view from, std::string_view to) {
    for (std::size_t at = text.find(from); at != std::string::npos; at = text.find(from, at + to.size()))
        text.replace(at, from.size(), to);
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

std::string escapeForScript(std::string_view value) {
    std::string escaped(value);
    replaceAll(escaped, "\\", "\\\\");
    replaceAll(escaped, "\"", "\\\"");
    return escaped;
}

std::string terminalScript(std::string_view tty) {
    const std::string match = "      if tty of aTab is \"" + escapeForScript(tty) + "\" then";
    return joinLines({"tell application \"Terminal\"", "  activate", "  repeat with aWindow in windows",
                      "    repeat with aTab in tabs of aWindow", match,
                      "        set selected of aTab to true", "        set index of aWindow to 1",
                      "      end if", "    end repeat", "  end repeat", "end tell"});
}

std::string iTermScript(std::string_view sessionId) {
    const std::size_t colon = sessionId.rfind(':');
    const std::string_view piece = colon == std::string_view::npos ? sessionId : sessionId.substr(colon + 1);
    const std::string match = "        if (id of aSession) is \"" + escapeForScript(piece) + "\" then";
    return joinLines({"tell application \"iTerm\"", "  activate", "  repeat with aWindow in windows",
                      "    repeat with aTab in tabs of aWindow",
                      "      repeat with aSession in sessions of aTab", match, "          select aWindow",
                      "          select aTab", "          select aSession", "        end if",
                      "      end repeat", "    end repeat", "  end repeat", "end tell"});
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

bool ShellRunner::appleScript(const std::string&) {
    return false;
}

} // namespace tovrin
