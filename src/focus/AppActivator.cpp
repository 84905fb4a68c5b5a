#include "focus/AppActivator.h"

#include "core/AsciiText.h"
#include "core/AtomicFile.h"
#include "core/KeyFile.h"

#include <algorithm>
#include <set>
#include <system_error>

namespace tovrin {

namespace {

namespace fs = std::filesystem;

// Loose name comparison: ASCII case ignored, a blank standing for a hyphen.
std::string folded(std::string_view text) {
    std::string out = AsciiText::lowercased(text);
    std::ranges::replace(out, ' ', '-');
    return out;
}

// The [Desktop Entry] group of a launchable application entry; nullopt for any other file.
std::optional<DesktopEntry> parseDesktopFile(const fs::path& path) {
    const auto text = readWholeFile(path);
    if (!text) return std::nullopt;
    const KeyFile::Group keys = KeyFile::group(text.value(), "Desktop Entry");
    if (KeyFile::value(keys, "Type") != "Application" || KeyFile::value(keys, "Hidden") == "true")
        return std::nullopt;
    DesktopEntry entry;
    entry.path = path;
    entry.name = KeyFile::value(keys, "Name").value_or("");
    entry.startupWMClass = KeyFile::value(keys, "StartupWMClass").value_or("");
    if (entry.name.empty()) return std::nullopt;
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
