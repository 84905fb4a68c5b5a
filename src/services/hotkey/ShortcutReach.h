#pragma once

#include <optional>
#include <string>

namespace tovrin {

// Which applications' key presses a global shortcut can see.
enum class ShortcutReach {
    allApplications,
    // A grab on X11 under a Wayland desktop sees only the keys of X11 (XWayland) windows.
    x11ApplicationsOnly,
    none,
};

// `throughPortal`: the desktop portal takes the shortcut, and the compositor sees every key for it.
ShortcutReach shortcutReach(bool displayAvailable, bool waylandSession, bool throughPortal = false);
// From the session's environment: WAYLAND_DISPLAY, or XDG_SESSION_TYPE "wayland".
bool isWaylandSession();

// A line for beside the recorder when the shortcut can't work everywhere; none when it can.
std::optional<std::string> reachNote(ShortcutReach reach);

} // namespace tovrin
