#pragma once

#include "services/hotkey/Shortcut.h"

#include <functional>

namespace tovrin {

enum class ShortcutRegistration {
    registered,
    // Another program holds the same key and modifiers, so it gets the presses.
    heldByAnotherProgram,
    // No display to register with, or no key on this keyboard gives the keysym.
    failed,
};

// The desktop's service for system-wide shortcuts: a shortcut registered here is reported when
// pressed in any application. Main loop only.
class GlobalShortcuts {
public:
    using PressedHandler = std::function<void(const Shortcut&)>;

    virtual ~GlobalShortcuts() = default;

    virtual ShortcutRegistration registerShortcut(const Shortcut& shortcut) = 0;
    // Unregistering a shortcut that isn't registered does nothing.
    virtual void unregisterShortcut(const Shortcut& shortcut) = 0;
    // Called on the main loop with the registered shortcut, once per press (key repeat doesn't count).
    virtual void setPressedHandler(PressedHandler handler) = 0;
    // Whether there is a display to register with at all; may connect to it to find out.
    virtual bool available() = 0;
    // Whether the desktop itself hands the shortcut over from every application (a Wayland portal).
    virtual bool throughPortal() const { return false; }
};

} // namespace tovrin
