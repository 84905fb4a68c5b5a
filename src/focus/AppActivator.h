#pragma once

#include "core/UserPaths.h"
#include "focus/AppActivating.h"
#include "focus/ShellRunner.h"
#include "focus/WindowSystem.h"

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tovrin {

// An application's .desktop file, as far as activation needs it.
struct DesktopEntry {
    std::string id;             // file id: the path below applications/, "/" as "-", no ".desktop"
    std::string name;           // Name=
    std::string startupWMClass; // StartupWMClass=, often empty
    std::filesystem::path path;

    bool operator==(const DesktopEntry&) const = default;
};

// Brings an application forward by name: its first normal window, or else starts it from its
// desktop file. Names come from status files ("Konsole", "VS Code", "GNOME Terminal") and from
// the editor table, so they are compared loosely: ignoring ASCII case, with a blank standing
// for a hyphen.
class AppActivator final : public AppActivating {
public:
    AppActivator(WindowSystem& windows, ShellRunner& shell,
                 std::vector<std::filesystem::path> applicationDirs = UserPaths::applicationFolders());

    // In order: the first window whose WM_CLASS class equals the name or whose instance
    // contains it; the first window of the desktop entry of that name; a launch of that entry
    // through gtk-launch (gio as a second try). Works synchronously: callers are on the focus
    // queue already. An empty name does nothing.
    void activate(const std::string& name) override;

    // Every launchable entry below the folders; an id found in an earlier folder hides later ones.
    static std::vector<DesktopEntry> readDesktopEntries(const std::vector<std::filesystem::path>& dirs);
    // The entry whose Name= matches, else the first whose id contains the name.
    static std::optional<DesktopEntry> findDesktopEntry(const std::vector<DesktopEntry>& entries,
                                                        std::string_view name);
    static bool windowMatches(const WindowInfo& window, std::string_view name);
    // By StartupWMClass, or without one by the id's last dotted part ("org.kde.konsole").
    static bool windowMatches(const WindowInfo& window, const DesktopEntry& entry);

private:
    WindowSystem& m_windows;
    ShellRunner& m_shell;
    std::vector<std::filesystem::path> m_applicationDirs;
};

} // namespace tovrin
