#pragma once

#include "platform/dbus/PortalGlobalShortcuts.h"

#include <memory>

namespace tovrin {

// The desktop's global shortcut service: on a Wayland session whose desktop portal offers global
// shortcuts, the portal, since an X11 grab there sees only X11 applications' keys; X11 key grabs
// otherwise. May ask the session bus, for a moment.
std::unique_ptr<GlobalShortcuts> makeGlobalShortcuts(PortalGlobalShortcuts::Describe describe = {});

} // namespace tovrin
