#include "services/hotkey/ShortcutReach.h"

#include <cstdlib>
#include <string_view>

namespace tovrin {

ShortcutReach shortcutReach(bool displayAvailable, bool waylandSession, bool throughPortal) {
    if (!displayAvailable) return ShortcutReach::none;
    return waylandSession && !throughPortal ? ShortcutReach::x11ApplicationsOnly
                                            : ShortcutReach::allApplications;
}

bool isWaylandSession() {
    const char* display = std::getenv("WAYLAND_DISPLAY");
    const char* type = std::getenv("XDG_SESSION_TYPE");
    return (display && *display) || (type && std::string_view(type) == "wayland");
}

std::optional<std::string> reachNote(ShortcutReach reach) {
    switch (reach) {
    case ShortcutReach::allApplications:
        return std::nullopt;
    case ShortcutReach::x11ApplicationsOnly:
        return "On Wayland the shortcut works only while an X11 application is in front.";
    case ShortcutReach::none:
        return "Global shortcuts need an X11 display or a desktop that offers them, and this session has "
               "neither.";
    }
    return std::nullopt;
}

} // namespace tovrin
