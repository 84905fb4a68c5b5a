#pragma once

#include "core/Lifetime.h"
#include "services/hotkey/GlobalShortcuts.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>
#include <xcb/xcb.h>

class QSocketNotifier;

namespace tovrin {

class XcbConnection;

// Global shortcuts as passive key grabs on the X root window, on a connection of their own ($DISPLAY
// unless given) whose events are read on the Qt main loop. A shortcut is grabbed on every key that
// gives its keysym and with every combination of Caps Lock, Num Lock and Scroll Lock, so the locks
// don't get in the way; a grab that another client holds already is reported as such. Grabs follow
// changes of the keyboard mapping. Without an X server every registration fails. Main thread only.
class XcbGlobalShortcuts final : public GlobalShortcuts {
public:
    explicit XcbGlobalShortcuts(std::optional<std::string> display = std::nullopt);
    ~XcbGlobalShortcuts() override;
    XcbGlobalShortcuts(const XcbGlobalShortcuts&) = delete;
    XcbGlobalShortcuts& operator=(const XcbGlobalShortcuts&) = delete;

    ShortcutRegistration registerShortcut(const Shortcut& shortcut) override;
    void unregisterShortcut(const Shortcut& shortcut) override;
    void setPressedHandler(PressedHandler handler) override;
    bool available() override;

private:
    // One key with one set of modifiers, as the server knows the grab.
    using KeyGrab = std::pair<xcb_keycode_t, std::uint16_t>;
    struct Registration {
        Shortcut shortcut;
        std::vector<KeyGrab> grabs;
    };
    struct KeyboardMap {
        xcb_keycode_t minKeycode = 0;
        std::uint8_t keysymsPerKeycode = 0;
        std::vector<xcb_keysym_t> keysyms;
        std::uint16_t numLockMask = 0;
        std::uint16_t scrollLockMask = 0;
    };

    xcb_connection_t* connection();
    void dropConnection();
    void loadKeyboardMap(xcb_connection_t* c);
    std::vector<xcb_keycode_t> keycodesOf(std::uint32_t keySym) const;
    std::vector<std::uint16_t> lockCombinations() const;
    ShortcutRegistration grab(xcb_connection_t* c, Registration& registration);
    void ungrab(xcb_connection_t* c, Registration& registration);
    void regrabAll(xcb_connection_t* c);
    void readEvents();
    // Errors and events that came in with replies wait in the connection's queue, where the socket's
    // readiness no longer tells of them.
    void readQueuedEventsSoon();
    void keyPressed(xcb_keycode_t keycode, std::uint16_t state, xcb_timestamp_t time);

    const std::unique_ptr<XcbConnection> m_connection;
    xcb_connection_t* m_watched = nullptr;
    std::unique_ptr<QSocketNotifier> m_notifier;
    KeyboardMap m_map;
    std::vector<Registration> m_registrations;
    PressedHandler m_pressed;
    // Held keys repeat as a release and a press with the same time; such a press isn't a new one.
    std::optional<std::pair<xcb_keycode_t, xcb_timestamp_t>> m_lastRelease;
    // The notifier is let go later than this object may be.
    Lifetime m_lifetime;
};

} // namespace tovrin
