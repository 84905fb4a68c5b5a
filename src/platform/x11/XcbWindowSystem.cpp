#include "platform/x11/XcbWindowSystem.h"

#include <algorithm>
#include <array>
#include <cstdlib>
#include <cstring>
#include <string_view>
#include <xcb/xcb.h>

namespace tovrin {

namespace {

constexpr std::array atomNames{"_NET_CLIENT_LIST",  "_NET_WM_WINDOW_TYPE", "_NET_WM_WINDOW_TYPE_NORMAL",
                               "_NET_WM_NAME",      "UTF8_STRING",         "_NET_WM_PID",
                               "_NET_ACTIVE_WINDOW"};

using Reply = std::unique_ptr<xcb_get_property_reply_t, decltype(&std::free)>;

Reply propertyReply(xcb_connection_t* c, xcb_get_property_cookie_t cookie) {
    return Reply(xcb_get_property_reply(c, cookie, nullptr), &std::free);
}

xcb_get_property_cookie_t requestProperty(xcb_connection_t* c, xcb_window_t window, xcb_atom_t property,
                                          xcb_atom_t type) {
    // 64 Ki 32-bit units: far more than any title or client list holds.
    return xcb_get_property(c, 0, window, property, type, 0, 65536);
}

std::string_view bytesOf(const Reply& reply) {
    if (!reply || reply->format != 8) return {};
    return {static_cast<const char*>(xcb_get_property_value(reply.get())),
            static_cast<std::size_t>(xcb_get_property_value_length(reply.get()))};
}

template <class T> std::vector<T> valuesOf(const Reply& reply, std::uint8_t format) {
    if (!reply || reply->format != format) return {};
    const auto* begin = static_cast<const T*>(xcb_get_property_value(reply.get()));
    return {begin, begin + xcb_get_property_value_length(reply.get()) / sizeof(T)};
}

// Errors of requests whose replies we don't wait for queue up as events; nobody reads them.
void dropEvents(xcb_connection_t* c) {
    while (xcb_generic_event_t* event = xcb_poll_for_event(c))
        std::free(event);
}

} // namespace

struct XcbWindowSystem::Atoms {
    xcb_atom_t clientList = XCB_ATOM_NONE;
    xcb_atom_t windowType = XCB_ATOM_NONE;
    xcb_atom_t windowTypeNormal = XCB_ATOM_NONE;
    xcb_atom_t wmName = XCB_ATOM_NONE;
    xcb_atom_t utf8String = XCB_ATOM_NONE;
    xcb_atom_t wmPid = XCB_ATOM_NONE;
    xcb_atom_t activeWindow = XCB_ATOM_NONE;
};

XcbWindowSystem::XcbWindowSystem(std::optional<std::string> display) : m_display(std::move(display)) {}

XcbWindowSystem::~XcbWindowSystem() {
    disconnect();
}

void XcbWindowSystem::disconnect() const {
    if (m_connection) xcb_disconnect(m_connection);
    m_connection = nullptr;
    m_atoms.reset();
}

xcb_connection_t* XcbWindowSystem::connection() const {
    if (m_connection && !xcb_connection_has_error(m_connection)) return m_connection;
    disconnect();
    const char* display = m_display ? m_display->c_str() : std::getenv("DISPLAY");
    if (!display || !*display) return nullptr;

    int screenNumber = 0;
    xcb_connection_t* c = xcb_connect(display, &screenNumber);
    if (xcb_connection_has_error(c)) {
        xcb_disconnect(c);
        return nullptr;
    }
    xcb_screen_iterator_t screens = xcb_setup_roots_iterator(xcb_get_setup(c));
    for (int i = 0; i < screenNumber && screens.rem; ++i)
        xcb_screen_next(&screens);
    if (!screens.rem) {
        xcb_disconnect(c);
        return nullptr;
    }

    std::array<xcb_intern_atom_cookie_t, atomNames.size()> cookies{};
    for (std::size_t i = 0; i < atomNames.size(); ++i)
        cookies[i] =
            xcb_intern_atom(c, 0, static_cast<std::uint16_t>(std::strlen(atomNames[i])), atomNames[i]);
    std::array<xcb_atom_t, atomNames.size()> atoms{};
    for (std::size_t i = 0; i < atomNames.size(); ++i) {
        xcb_intern_atom_reply_t* reply = xcb_intern_atom_reply(c, cookies[i], nullptr);
        atoms[i] = reply ? reply->atom : xcb_atom_t{XCB_ATOM_NONE};
        std::free(reply);
    }
    m_atoms =
        std::make_unique<Atoms>(Atoms{atoms[0], atoms[1], atoms[2], atoms[3], atoms[4], atoms[5], atoms[6]});
    m_root = screens.data->root;
    m_connection = c;
    return c;
}

bool XcbWindowSystem::available() const {
    std::lock_guard lock(m_mutex);
    return connection() != nullptr;
}

std::vector<WindowInfo> XcbWindowSystem::normalWindows() const {
    std::lock_guard lock(m_mutex);
    xcb_connection_t* c = connection();
    if (!c) return {};
    const Atoms& atom = *m_atoms;

    const auto clients = valuesOf<xcb_window_t>(
        propertyReply(c, requestProperty(c, m_root, atom.clientList, XCB_ATOM_WINDOW)), 32);

    // All requests first, then the replies: one round trip for the whole list.
    struct Pending {
        xcb_get_property_cookie_t type, transientFor, netName, name, wmClass, pid;
    };
    std::vector<Pending> pending;
    pending.reserve(clients.size());
    for (xcb_window_t w : clients) {
        pending.push_back({requestProperty(c, w, atom.windowType, XCB_ATOM_ATOM),
                           requestProperty(c, w, XCB_ATOM_WM_TRANSIENT_FOR, XCB_ATOM_WINDOW),
                           requestProperty(c, w, atom.wmName, atom.utf8String),
                           requestProperty(c, w, XCB_ATOM_WM_NAME, XCB_GET_PROPERTY_TYPE_ANY),
                           requestProperty(c, w, XCB_ATOM_WM_CLASS, XCB_ATOM_STRING),
                           requestProperty(c, w, atom.wmPid, XCB_ATOM_CARDINAL)});
    }

    std::vector<WindowInfo> windows;
    for (std::size_t i = 0; i < clients.size(); ++i) {
        const Pending& p = pending[i];
        const auto types = valuesOf<xcb_atom_t>(propertyReply(c, p.type), 32);
        const bool transient = !valuesOf<xcb_window_t>(propertyReply(c, p.transientFor), 32).empty();
        Reply netName = propertyReply(c, p.netName);
        Reply name = propertyReply(c, p.name);
        Reply wmClass = propertyReply(c, p.wmClass);
        Reply pid = propertyReply(c, p.pid);

        // Without a declared type, a window that belongs to another is a dialog.
        const bool normal =
            types.empty() ? !transient : std::ranges::find(types, atom.windowTypeNormal) != types.end();
        if (!normal) continue;

        WindowInfo info;
        info.id = clients[i];
        const std::string_view title = bytesOf(netName);
        info.title = std::string(title.empty() ? bytesOf(name) : title);
        // WM_CLASS holds two NUL-terminated strings: instance, then class.
        const std::string_view classes = bytesOf(wmClass);
        const std::size_t split = classes.find('\0');
        info.classInstance = std::string(classes.substr(0, split));
        if (split != std::string_view::npos) {
            std::string_view rest = classes.substr(split + 1);
            info.className = std::string(rest.substr(0, rest.find('\0')));
        }
        if (const auto pids = valuesOf<std::uint32_t>(pid, 32); !pids.empty()) info.pid = pids.front();
        windows.push_back(std::move(info));
    }
    dropEvents(c);
    return windows;
}

bool XcbWindowSystem::activate(std::uint64_t windowId) {
    std::lock_guard lock(m_mutex);
    xcb_connection_t* c = connection();
    if (!c || windowId == 0 || windowId > UINT32_MAX) return false;
    const auto window = static_cast<xcb_window_t>(windowId);

    // Source indication 2: a pager or taskbar acting for the user, which window managers obey
    // without their focus-stealing rules.
    xcb_client_message_event_t event{};
    event.response_type = XCB_CLIENT_MESSAGE;
    event.format = 32;
    event.window = window;
    event.type = m_atoms->activeWindow;
    event.data.data32[0] = 2;
    event.data.data32[1] = XCB_CURRENT_TIME;
    event.data.data32[2] = XCB_WINDOW_NONE;
    xcb_send_event(c, 0, m_root, XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT | XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY,
                   reinterpret_cast<const char*>(&event));
    // Raise too, for window managers that focus without restacking; a managing WM redirects it.
    const std::uint32_t above = XCB_STACK_MODE_ABOVE;
    xcb_configure_window(c, window, XCB_CONFIG_WINDOW_STACK_MODE, &above);

    // A round trip, so that a vanished window or a broken connection shows here.
    xcb_generic_error_t* error = nullptr;
    auto* attributes = xcb_get_window_attributes_reply(c, xcb_get_window_attributes(c, window), &error);
    const bool ok = attributes != nullptr && error == nullptr;
    std::free(attributes);
    std::free(error);
    dropEvents(c);
    return ok;
}

} // namespace tovrin
