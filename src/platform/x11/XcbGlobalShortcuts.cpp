#include "platform/x11/XcbGlobalShortcuts.h"

#include "platform/x11/XcbConnection.h"

#include <QMetaObject>
#include <QSocketNotifier>
#include <algorithm>
#include <cstdlib>

namespace tovrin {
namespace {

constexpr xcb_keysym_t numLockKeySym = 0xff7f;
constexpr xcb_keysym_t scrollLockKeySym = 0xff14;
constexpr std::uint8_t badAccess = 10;
constexpr int modifierCount = 8;

template <class T> using Reply = std::unique_ptr<T, decltype(&std::free)>;

} // namespace

XcbGlobalShortcuts::XcbGlobalShortcuts(std::optional<std::string> display)
    : m_connection(std::make_unique<XcbConnection>(std::move(display), std::vector<std::string>{})) {}

XcbGlobalShortcuts::~XcbGlobalShortcuts() {
    if (m_watched && !xcb_connection_has_error(m_watched)) {
        for (Registration& registration : m_registrations)
            ungrab(m_watched, registration);
        xcb_flush(m_watched);
    }
}

bool XcbGlobalShortcuts::available() {
    return connection() != nullptr;
}

void XcbGlobalShortcuts::setPressedHandler(PressedHandler handler) {
    m_pressed = std::move(handler);
}

xcb_connection_t* XcbGlobalShortcuts::connection() {
    if (m_watched && !xcb_connection_has_error(m_watched)) return m_watched;
    dropConnection();
    xcb_connection_t* c = m_connection->get();
    if (!c) return nullptr;
    m_watched = c;
    loadKeyboardMap(c);
    m_notifier = std::make_unique<QSocketNotifier>(xcb_get_file_descriptor(c), QSocketNotifier::Read);
    QObject::connect(m_notifier.get(), &QSocketNotifier::activated, m_notifier.get(),
                     m_lifetime.guard([this] { readEvents(); }));
    // A new connection holds none of the grabs of the one that broke.
    regrabAll(c);
    return c;
}

void XcbGlobalShortcuts::dropConnection() {
    // Later, since the notifier may be what called.
    if (m_notifier) {
        m_notifier->setEnabled(false);
        m_notifier.release()->deleteLater();
    }
    m_watched = nullptr;
}

void XcbGlobalShortcuts::loadKeyboardMap(xcb_connection_t* c) {
    const xcb_setup_t* setup = xcb_get_setup(c);
    const auto keyboardCookie = xcb_get_keyboard_mapping(
        c, setup->min_keycode, static_cast<std::uint8_t>(setup->max_keycode - setup->min_keycode + 1));
    const auto modifierCookie = xcb_get_modifier_mapping(c);
    Reply<xcb_get_keyboard_mapping_reply_t> keyboard(
        xcb_get_keyboard_mapping_reply(c, keyboardCookie, nullptr), &std::free);
    Reply<xcb_get_modifier_mapping_reply_t> modifiers(
        xcb_get_modifier_mapping_reply(c, modifierCookie, nullptr), &std::free);
    m_map = {};
    if (!keyboard) return;
    m_map.minKeycode = setup->min_keycode;
    m_map.keysymsPerKeycode = keyboard->keysyms_per_keycode;
    const xcb_keysym_t* keysyms = xcb_get_keyboard_mapping_keysyms(keyboard.get());
    m_map.keysyms.assign(keysyms, keysyms + xcb_get_keyboard_mapping_keysyms_length(keyboard.get()));
    if (!modifiers) return;

    // Num Lock and Scroll Lock have no fixed modifier bit: each is whichever modifier its key is on.
    const xcb_keycode_t* keycodes = xcb_get_modifier_mapping_keycodes(modifiers.get());
    const int perModifier = modifiers->keycodes_per_modifier;
    const auto keyGives = [&](xcb_keycode_t keycode, xcb_keysym_t wanted) {
        if (keycode < m_map.minKeycode || m_map.keysymsPerKeycode == 0) return false;
        const std::size_t first = std::size_t(keycode - m_map.minKeycode) * m_map.keysymsPerKeycode;
        for (std::size_t column = 0; column < m_map.keysymsPerKeycode; ++column) {
            if (first + column < m_map.keysyms.size() && m_map.keysyms[first + column] == wanted) return true;
        }
        return false;
    };
    for (int modifier = 0; modifier < modifierCount; ++modifier) {
        for (int i = 0; i < perModifier; ++i) {
            const xcb_keycode_t keycode = keycodes[modifier * perModifier + i];
            const auto bit = static_cast<std::uint16_t>(1U << modifier);
            if (keyGives(keycode, numLockKeySym)) m_map.numLockMask = bit;
            if (keyGives(keycode, scrollLockKeySym)) m_map.scrollLockMask = bit;
        }
    }
}

std::vector<xcb_keycode_t> XcbGlobalShortcuts::keycodesOf(std::uint32_t keySym) const {
    // A keysym in the first group is what the key types now; in a later group it belongs to another
    // layout, whose key could type something else here. Those count only when no first-group key has it.
    std::vector<xcb_keycode_t> firstGroup;
    std::vector<xcb_keycode_t> laterGroups;
    const std::uint32_t shifted = shiftedLetter(keySym);
    const std::size_t per = m_map.keysymsPerKeycode;
    for (std::size_t first = 0; per > 0 && first + per <= m_map.keysyms.size(); first += per) {
        const auto keycode = static_cast<xcb_keycode_t>(m_map.minKeycode + first / per);
        for (std::size_t column = 0; column < per; ++column) {
            const xcb_keysym_t sym = m_map.keysyms[first + column];
            if (sym != keySym && sym != shifted) continue;
            (column < 2 ? firstGroup : laterGroups).push_back(keycode);
            break;
        }
    }
    return firstGroup.empty() ? laterGroups : firstGroup;
}

std::vector<std::uint16_t> XcbGlobalShortcuts::lockCombinations() const {
    std::vector<std::uint16_t> combinations{0};
    for (const std::uint16_t lock :
         {std::uint16_t{XCB_MOD_MASK_LOCK}, m_map.numLockMask, m_map.scrollLockMask}) {
        if (lock == 0 || std::ranges::find(combinations, lock) != combinations.end()) continue;
        const std::size_t count = combinations.size();
        for (std::size_t i = 0; i < count; ++i)
            combinations.push_back(static_cast<std::uint16_t>(combinations[i] | lock));
    }
    return combinations;
}

ShortcutRegistration XcbGlobalShortcuts::grab(xcb_connection_t* c, Registration& registration) {
    const std::vector<xcb_keycode_t> keycodes = keycodesOf(registration.shortcut.keySym);
    if (keycodes.empty()) return ShortcutRegistration::failed;
    const xcb_window_t root = m_connection->root();
    std::vector<xcb_void_cookie_t> cookies;
    for (const xcb_keycode_t keycode : keycodes) {
        for (const std::uint16_t locks : lockCombinations()) {
            const auto modifiers = static_cast<std::uint16_t>(registration.shortcut.modifiers | locks);
            registration.grabs.emplace_back(keycode, modifiers);
            cookies.push_back(xcb_grab_key_checked(c, 1, root, modifiers, keycode, XCB_GRAB_MODE_ASYNC,
                                                   XCB_GRAB_MODE_ASYNC));
        }
    }
    ShortcutRegistration result = ShortcutRegistration::registered;
    for (const xcb_void_cookie_t cookie : cookies) {
        Reply<xcb_generic_error_t> error(xcb_request_check(c, cookie), &std::free);
        if (!error) continue;
        if (error->error_code == badAccess)
            result = ShortcutRegistration::heldByAnotherProgram;
        else if (result == ShortcutRegistration::registered)
            result = ShortcutRegistration::failed;
    }
    // Half a shortcut would fire or not depending on the lock keys: all or nothing.
    if (result != ShortcutRegistration::registered) ungrab(c, registration);
    return result;
}

void XcbGlobalShortcuts::ungrab(xcb_connection_t* c, Registration& registration) {
    // Ungrabbing takes away only this client's grabs, never another program's.
    for (const auto& [keycode, modifiers] : registration.grabs)
        xcb_ungrab_key(c, keycode, m_connection->root(), modifiers);
    registration.grabs.clear();
}

void XcbGlobalShortcuts::regrabAll(xcb_connection_t* c) {
    for (Registration& registration : m_registrations) {
        ungrab(c, registration);
        grab(c, registration);
    }
    xcb_flush(c);
}

ShortcutRegistration XcbGlobalShortcuts::registerShortcut(const Shortcut& shortcut) {
    xcb_connection_t* c = connection();
    if (!c) return ShortcutRegistration::failed;
    const bool known = std::ranges::any_of(
        m_registrations, [&](const Registration& r) { return r.shortcut == shortcut && !r.grabs.empty(); });
    if (known) return ShortcutRegistration::registered;
    Registration registration{shortcut, {}};
    const ShortcutRegistration result = grab(c, registration);
    if (result == ShortcutRegistration::registered) {
        std::erase_if(m_registrations, [&](const Registration& r) { return r.shortcut == shortcut; });
        m_registrations.push_back(std::move(registration));
    }
    readQueuedEventsSoon();
    return result;
}

void XcbGlobalShortcuts::unregisterShortcut(const Shortcut& shortcut) {
    const auto it =
        std::ranges::find_if(m_registrations, [&](const Registration& r) { return r.shortcut == shortcut; });
    if (it == m_registrations.end()) return;
    if (m_watched && !xcb_connection_has_error(m_watched)) {
        ungrab(m_watched, *it);
        // A round trip, so that the key is free for other programs once this returns.
        std::free(xcb_get_input_focus_reply(m_watched, xcb_get_input_focus(m_watched), nullptr));
    }
    m_registrations.erase(it);
}

void XcbGlobalShortcuts::readQueuedEventsSoon() {
    if (!m_notifier) return;
    QMetaObject::invokeMethod(m_notifier.get(), m_lifetime.guard([this] { readEvents(); }),
                              Qt::QueuedConnection);
}

void XcbGlobalShortcuts::readEvents() {
    xcb_connection_t* c = m_watched;
    if (!c) return;
    bool mappingChanged = false;
    while (xcb_generic_event_t* event = xcb_poll_for_event(c)) {
        Reply<xcb_generic_event_t> owned(event, &std::free);
        switch (event->response_type & 0x7f) {
        case XCB_KEY_PRESS: {
            const auto* press = reinterpret_cast<const xcb_key_press_event_t*>(event);
            keyPressed(press->detail, press->state, press->time);
            break;
        }
        case XCB_KEY_RELEASE: {
            const auto* release = reinterpret_cast<const xcb_key_release_event_t*>(event);
            m_lastRelease = {release->detail, release->time};
            break;
        }
        case XCB_MAPPING_NOTIFY:
            if (reinterpret_cast<const xcb_mapping_notify_event_t*>(event)->request != XCB_MAPPING_POINTER)
                mappingChanged = true;
            break;
        default:
            break;
        }
        // A handler may have let the connection go.
        if (c != m_watched) return;
    }
    if (xcb_connection_has_error(c)) {
        // Without a server there is nothing left to read; the next registration connects anew.
        dropConnection();
        return;
    }
    if (mappingChanged) {
        loadKeyboardMap(c);
        regrabAll(c);
    }
}

void XcbGlobalShortcuts::keyPressed(xcb_keycode_t keycode, std::uint16_t state, xcb_timestamp_t time) {
    const bool repeat = m_lastRelease && m_lastRelease->first == keycode && m_lastRelease->second == time;
    m_lastRelease.reset();
    if (repeat || !m_pressed) return;
    const std::uint32_t modifiers = state & ShortcutModifier::all;
    const auto it = std::ranges::find_if(m_registrations, [&](const Registration& r) {
        return r.shortcut.modifiers == modifiers &&
               std::ranges::any_of(r.grabs, [&](const KeyGrab& g) { return g.first == keycode; });
    });
    if (it == m_registrations.end()) return;
    // A copy: the handler may register or unregister shortcuts.
    const Shortcut pressed = it->shortcut;
    m_pressed(pressed);
}

} // namespace tovrin
