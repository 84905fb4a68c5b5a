#include "focus/AppActivator.h"

#include "core/UserPaths.h"

#include <algorithm>
#include <cstdlib>
#include <fstream>
#include <set>
#include <system_error>

namespace tovrin {

namespace {

namespace fs = std::filesystem;

std::string folded(std::string_view text) {
    std::string out(text);
    for (char& c : out) {
        if (c >= 'A' && c <= 'Z')
            c = static_cast<char>(c - 'A' + 'a');
        else if (c == ' ')
            c = '-';
    }
    return out;
}

std::string_view trimmed(std::string_view text) {
    const auto first = text.find_first_not_of(" \t\r");
    if (first == std::string_view::npos) return {};
    return text.substr(first, text.find_last_not_of(" \t\r") - first + 1);
}

// The keys of the [Desktop Entry] group; nullopt for entries that can't be launched.
std::optional<DesktopEntry> parseDesktopFile(const fs::path& path) {
    std::ifstream in(path);
    if (!in) return std::nullopt;
    DesktopEntry entry;
    entry.path = path;
    bool inMainGroup = false;
    bool application = false;
    std::string line;
    while (std::getline(in, line)) {
        const std::string_view text = trimmed(line);
        if (text.empty() || text.front() == '#') continue;
        if (text.front() == '[') {
            inMainGroup = text == "[Desktop Entry]";
            continue;
        }
        if (!inMainGroup) continue;
        const auto equals = text.find('=');
        if (equals == std::string_view::npos) continue;
        const std::string_view key = trimmed(text.substr(0, equals));
        const std::string_view value = trimmed(text.substr(equals + 1));
        if (key == "Name")
            entry.name = value;
        else if (key == "StartupWMClass")
            entry.startupWMClass = value;
        else if (key == "Type")
            application = value == "Application";
        else if (key == "Hidden" && value == "true")
            return std::nullopt;
    }
    if (!application || entry.name.empty()) return std::nullopt;
    return entry;
}

// Host names that sessions record under another name than their application's window class.
std::string_view windowNameOf(std::string_view recorded) {
    if (recorded == "VS Code") return "Code";
    return recorded;
}

} // namespace

AppActivator::AppActivator(WindowSystem& windows, ShellRunner& shell,
                           std::vector<std::filesystem::path> applicationDirs)
    : m_windows(windows), m_shell(shell), m_applicationDirs(std::move(applicationDirs)) {}

void AppActivator::activate(const std::string& recordedName) {
    if (recordedName.empty()) return;
    const std::string name(windowNameOf(recordedName));
    const std::vector<WindowInfo> windows = m_windows.normalWindows();
    for (const WindowInfo& window : windows) {
        if (windowMatches(window, name)) {
            m_windows.activate(window.id);
            return;
        }
    }
    const auto entry = findDesktopEntry(readDesktopEntries(m_applicationDirs), name);
    if (!entry) return;
    for (const WindowInfo& window : windows) {
        if (windowMatches(window, *entry)) {
            m_windows.activate(window.id);
            return;
        }
    }
    if (!m_shell.run("gtk-launch", {entry->id})) m_shell.run("gio", {"launch", entry->path.string()});
}

std::vector<fs::path> AppActivator::applicationDirectories() {
    std::vector<fs::path> dirs;
    const char* dataHome = std::getenv("XDG_DATA_HOME");
    if (dataHome && fs::path(dataHome).is_absolute())
        dirs.push_back(fs::path(dataHome) / "applications");
    else
        dirs.push_back(UserPaths::home() / ".local/share/applications");

    const char* dataDirs = std::getenv("XDG_DATA_DIRS");
    std::string_view list = dataDirs && *dataDirs ? dataDirs : "/usr/local/share:/usr/share";
    while (!list.empty()) {
        const auto colon = list.find(':');
        const fs::path dir(list.substr(0, colon));
        if (dir.is_absolute()) dirs.push_back(dir / "applications");
        list = colon == std::string_view::npos ? std::string_view{} : list.substr(colon + 1);
    }
    return dirs;
}

std::vector<DesktopEntry> AppActivator::readDesktopEntries(const std::vector<fs::path>& dirs) {
    std::vector<DesktopEntry> entries;
    std::set<std::string> seen;
    for (const fs::path& dir : dirs) {
        std::error_code error;
        std::vector<fs::path> files;
        for (fs::recursive_directory_iterator it(dir, error), end; !error && it != end; it.increment(error)) {
            if (it->path().extension() == ".desktop" && it->is_regular_file(error))
                files.push_back(it->path());
        }
        std::ranges::sort(files); // a stable order, whatever the file system lists
        for (const fs::path& file : files) {
            std::string id = file.lexically_relative(dir).replace_extension().generic_string();
            std::ranges::replace(id, '/', '-');
            if (!seen.insert(id).second) continue;
            if (auto entry = parseDesktopFile(file)) {
                entry->id = std::move(id);
                entries.push_back(std::move(*entry));
            }
        }
    }
    return entries;
}

std::optional<DesktopEntry> AppActivator::findDesktopEntry(const std::vector<DesktopEntry>& entries,
                                                           std::string_view name) {
    const std::string key = folded(name);
    if (key.empty()) return std::nullopt;
    for (const DesktopEntry& entry : entries)
        if (folded(entry.name) == key) return entry;
    for (const DesktopEntry& entry : entries)
        if (folded(entry.id).find(key) != std::string::npos) return entry;
    return std::nullopt;
}

bool AppActivator::windowMatches(const WindowInfo& window, std::string_view name) {
    const std::string key = folded(name);
    return !key.empty() &&
           (folded(window.className) == key || folded(window.classInstance).find(key) != std::string::npos);
}

bool AppActivator::windowMatches(const WindowInfo& window, const DesktopEntry& entry) {
    std::string key = entry.startupWMClass;
    if (key.empty()) key = entry.id.substr(entry.id.rfind('.') + 1);
    key = folded(key);
    return !key.empty() && (folded(window.className) == key || folded(window.classInstance) == key);
}

} // namespace tovrin
