#include "focus/TmuxHostWindow.h"

#include <algorithm>
#include <charconv>
#include <fstream>
#include <utility>

namespace tovrin {
namespace {

std::optional<std::int64_t> number(std::string_view text) {
    std::int64_t value = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    if (error != std::errc{} || end != text.data() + text.size()) return std::nullopt;
    return value;
}

} // namespace

std::optional<std::int64_t> parentProcess(std::int64_t pid) {
    std::ifstream status("/proc/" + std::to_string(pid) + "/status");
    std::string line;
    while (std::getline(status, line)) {
        if (!line.starts_with("PPid:")) continue;
        const std::string_view value(line);
        const auto start = value.find_first_not_of(" \t", 5);
        return start == std::string_view::npos ? std::nullopt : number(value.substr(start));
    }
    return std::nullopt;
}

std::vector<std::string> TmuxHostWindow::listClientsArguments(const std::string& pane) {
    return {"list-clients", "-t", pane, "-F", "#{client_activity} #{client_pid}"};
}

std::vector<std::int64_t> TmuxHostWindow::clientsByActivity(std::string_view listing) {
    std::vector<std::pair<std::int64_t, std::int64_t>> clients; // activity, pid
    while (!listing.empty()) {
        const auto end = listing.find('\n');
        const std::string_view line = listing.substr(0, end);
        listing = end == std::string_view::npos ? std::string_view{} : listing.substr(end + 1);
        const auto blank = line.find(' ');
        if (blank == std::string_view::npos) continue;
        const auto activity = number(line.substr(0, blank));
        const auto pid = number(line.substr(blank + 1));
        if (activity && pid && *pid > 0) clients.emplace_back(*activity, *pid);
    }
    std::ranges::stable_sort(clients, std::ranges::greater{}, &std::pair<std::int64_t, std::int64_t>::first);
    std::vector<std::int64_t> pids;
    pids.reserve(clients.size());
    for (const auto& client : clients)
        pids.push_back(client.second);
    return pids;
}

bool TmuxHostWindow::raise(const std::string& pane) {
    if (!m_windows.available()) return false;
    const std::optional<std::string> listing = m_shell.output("tmux", listClientsArguments(pane));
    return listing && raiseWindowOfAny(clientsByActivity(*listing));
}

bool TmuxHostWindow::raiseWindowOfAny(const std::vector<std::int64_t>& pids) {
    if (pids.empty() || !m_windows.available()) return false;
    const std::vector<WindowInfo> windows = m_windows.normalWindows();
    for (const std::int64_t pid : pids) {
        if (const auto window = windowOfAncestor(pid, windows)) return m_windows.activate(*window);
    }
    return false;
}

std::optional<std::uint64_t> TmuxHostWindow::windowOfAncestor(std::int64_t pid,
                                                              const std::vector<WindowInfo>& windows) const {
    // Bounded, so a process table that changes under the walk cannot keep it going.
    for (int depth = 0; depth < 64 && pid > 1; ++depth) {
        const auto owned = std::ranges::find(windows, std::optional(pid), &WindowInfo::pid);
        if (owned != windows.end()) return owned->id;
        const std::optional<std::int64_t> parent = m_parentOf(pid);
        if (!parent) return std::nullopt;
        pid = *parent;
    }
    return std::nullopt;
}

} // namespace tovrin
