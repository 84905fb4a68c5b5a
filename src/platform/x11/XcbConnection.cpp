#include "platform/x11/XcbConnection.h"

#include <algorithm>
#include <cstdlib>

namespace tovrin {

XcbConnection::XcbConnection(std::optional<std::string> display, std::vector<std::string> atomNames)
    : m_display(std::move(display)), m_atomNames(std::move(atomNames)) {}

XcbConnection::~XcbConnection() {
    disconnect();
}

void XcbConnection::disconnect() {
    if (m_connection) xcb_disconnect(m_connection);
    m_connection = nullptr;
    m_root = XCB_WINDOW_NONE;
    m_atoms.clear();
}

xcb_connection_t* XcbConnection::get() {
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

    // All requests first, then the replies: one round trip.
    std::vector<xcb_intern_atom_cookie_t> cookies;
    cookies.reserve(m_atomNames.size());
    for (const std::string& name : m_atomNames)
        cookies.push_back(xcb_intern_atom(c, 0, static_cast<std::uint16_t>(name.size()), name.data()));
    m_atoms.reserve(cookies.size());
    for (xcb_intern_atom_cookie_t cookie : cookies) {
        xcb_intern_atom_reply_t* reply = xcb_intern_atom_reply(c, cookie, nullptr);
        m_atoms.push_back(reply ? reply->atom : xcb_atom_t{XCB_ATOM_NONE});
        std::free(reply);
    }
    m_root = screens.data->root;
    m_connection = c;
    return c;
}

void XcbConnection::sendToRoot(xcb_window_t window, xcb_atom_t type, std::array<std::uint32_t, 5> data) {
    xcb_client_message_event_t event{};
    event.response_type = XCB_CLIENT_MESSAGE;
    event.format = 32;
    event.window = window;
    event.type = type;
    std::ranges::copy(data, event.data.data32);
    xcb_send_event(m_connection, 0, m_root,
                   XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT | XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY,
                   reinterpret_cast<const char*>(&event));
}

void XcbConnection::dropEvents() {
    while (xcb_generic_event_t* event = xcb_poll_for_event(m_connection))
        std::free(event);
}

xcb_get_property_cookie_t requestProperty(xcb_connection_t* c, xcb_window_t window, xcb_atom_t property,
                                          xcb_atom_t type) {
    // 64 Ki 32-bit units: far more than any title or list of windows or states holds.
    return xcb_get_property(c, 0, window, property, type, 0, 65536);
}

XcbPropertyReply propertyReply(xcb_connection_t* c, xcb_get_property_cookie_t cookie) {
    return XcbPropertyReply(xcb_get_property_reply(c, cookie, nullptr), &std::free);
}

std::string_view bytesOf(const XcbPropertyReply& reply) {
    if (!reply || reply->format != 8) return {};
    return {static_cast<const char*>(xcb_get_property_value(reply.get())),
            static_cast<std::size_t>(xcb_get_property_value_length(reply.get()))};
}

} // namespace tovrin
