#pragma once

#include "focus/ShellRunner.h"
#include "focus/WindowSystem.h"

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace tovrin {

// The parent of a process, from /proc/<pid>/status; nothing once the process is gone.
std::optional<std::int64_t> parentProcess(std::int64_t pid);

// Raises the terminal window that shows a tmux session: tmux knows the processes of the clients
// attached to it, and the terminal is the first of their ancestors that owns a window.
class TmuxHostWindow {
public:
    using ParentOf = std::function<std::optional<std::int64_t>(std::int64_t)>;

    TmuxHostWindow(ShellRunner& shell, WindowSystem& windows, ParentOf parentOf = parentProcess)
        : m_shell(shell), m_windows(windows), m_parentOf(std::move(parentOf)) {}

    // Tries the clients of the pane's session, most recently active first; false when none
    // leads to a window.
    bool raise(const std::string& pane);
    // Raises the window of the first of these processes that leads to one through its ancestors.
    bool raiseWindowOfAny(const std::vector<std::int64_t>& pids);

    // The query whose output `clientsByActivity` reads.
    static std::vector<std::string> listClientsArguments(const std::string& pane);
    // Client process ids from lines of "<activity> <pid>", most recently active first; lines of
    // another shape are skipped.
    static std::vector<std::int64_t> clientsByActivity(std::string_view listing);

private:
    std::optional<std::uint64_t> windowOfAncestor(std::int64_t pid,
                                                  const std::vector<WindowInfo>& windows) const;

    ShellRunner& m_shell;
    WindowSystem& m_windows;
    ParentOf m_parentOf;
};

} // namespace tovrin
