#pragma once

#include <array>
#include <cstdint>
#include <cstdlib>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>
#include <xcb/xcb.h>

namespace tovrin {

// One connection to an X server ($DISPLAY unless given), its screen's root window and a set of
// atoms, made on first use and again after the connection has broken. Not thread-safe: the owner
// serialises calls.
class XcbConnection {
public:
    // atom(i) answers for atomNames[i].
    XcbConnection(std::optional<std::string> display, std::vector<std::string> atomNames);
    ~XcbConnection();
    XcbConnection(const XcbConnection&) = delete;
    XcbConnection& operator=(const XcbConnection&) = delete;

    // The live connection, connecting if needed; null without a server.
    xcb_connection_t* get();
    // Valid while get() has last answered a connection.
    xcb_window_t root() const { return m_root; }
    xcb_atom_t atom(std::size_t index) const { return m_atoms.at(index); }

    // An EWMH client message about `window`, sent to the root window for the window manager.
    void sendToRoot(xcb_window_t window, xcb_atom_t type, std::array<std::uint32_t, 5> data);
    // Errors of requests whose replies we don't wait for queue up as events; nobody reads them.
    void dropEvents();

private:
    void disconnect();

    std::optional<std::string> m_display;
    std::vector<std::string> m_atomNames;
    xcb_connection_t* m_connection = nullptr;
    xcb_window_t m_root = XCB_WINDOW_NONE;
    std::vector<xcb_atom_t> m_atoms;
};

using XcbPropertyReply = std::unique_ptr<xcb_get_property_reply_t, decltype(&std::free)>;

xcb_get_property_cookie_t requestProperty(xcb_connection_t* c, xcb_window_t window, xcb_atom_t property,
                                          xcb_atom_t type);
XcbPropertyReply propertyReply(xcb_connection_t* c, xcb_get_property_cookie_t cookie);

// The property's value as text, or empty when it is missing or not 8-bit.
std::string_view bytesOf(const XcbPropertyReply& reply);

// The property's 32-bit values (windows, atoms, cardinals), or none when it is missing or not 32-bit.
template <class T> std::vector<T> valuesOf(const XcbPropertyReply& reply) {
    static_assert(sizeof(T) == 4);
    if (!reply || reply->format != 32) return {};
    const auto* begin = static_cast<const T*>(xcb_get_property_value(reply.get()));
    return {begin, begin + xcb_get_property_value_length(reply.get()) / sizeof(T)};
}

} // namespace tovrin
