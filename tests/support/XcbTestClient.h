#pragma once

#include "support/PollUntil.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <functional>
#include <string>
#include <thread>
#include <unistd.h>
#include <vector>
#include <xcb/xcb.h>

namespace tovrin::test {

// A second client on the private X server of run-x11-tests.sh, which looks at windows as any other
// client, or the window manager, sees them.
class XcbTestClient {
public:
    // Tests that need the private server skip elsewhere, so no desktop gets test windows.
    static bool onPrivateDisplay() {
        const char* isPrivate = std::getenv("TOVRIN_PRIVATE_X_DISPLAY");
        return isPrivate && std::strcmp(isPrivate, "1") == 0;
    }

    XcbTestClient() : m_c(xcb_connect(nullptr, nullptr)) {
        if (!xcb_connection_has_error(m_c)) m_root = xcb_setup_roots_iterator(xcb_get_setup(m_c)).data->root;
    }
    ~XcbTestClient() { xcb_disconnect(m_c); }
    XcbTestClient(const XcbTestClient&) = delete;
    XcbTestClient& operator=(const XcbTestClient&) = delete;

    bool connected() const { return xcb_connection_has_error(m_c) == 0; }
    xcb_connection_t* connection() const { return m_c; }
    xcb_window_t root() const { return m_root; }

    // Whether a client redirects the root's map requests, as only a window manager does. Looked at,
    // not tried: taking the redirect even for a moment could make a starting manager give up.
    bool windowManagerRuns() const {
        auto* attributes =
            xcb_get_window_attributes_reply(m_c, xcb_get_window_attributes(m_c, m_root), nullptr);
        const bool redirected =
            attributes && (attributes->all_event_masks & XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT) != 0;
        std::free(attributes);
        return redirected;
    }

    xcb_atom_t atom(const char* name) const {
        auto* reply = xcb_intern_atom_reply(
            m_c, xcb_intern_atom(m_c, 0, static_cast<std::uint16_t>(std::strlen(name)), name), nullptr);
        const xcb_atom_t result = reply ? reply->atom : xcb_atom_t{XCB_ATOM_NONE};
        std::free(reply);
        return result;
    }

    // The 32-bit values of a property; empty when it is missing or of another format.
    std::vector<std::uint32_t> property(xcb_window_t window, xcb_atom_t property) const {
        auto* reply = xcb_get_property_reply(
            m_c, xcb_get_property(m_c, 0, window, property, XCB_GET_PROPERTY_TYPE_ANY, 0, 1024), nullptr);
        std::vector<std::uint32_t> values;
        if (reply && reply->format == 32) {
            const auto* data = static_cast<const std::uint32_t*>(xcb_get_property_value(reply));
            values.assign(data, data + xcb_get_property_value_length(reply) / 4);
        }
        std::free(reply);
        return values;
    }
    std::vector<std::uint32_t> property(xcb_window_t window, const char* name) const {
        return property(window, atom(name));
    }

    std::uint32_t activeWindow() const {
        const auto values = property(m_root, "_NET_ACTIVE_WINDOW");
        return values.empty() ? 0 : values.front();
    }

    bool viewable(xcb_window_t window) const {
        auto* attributes =
            xcb_get_window_attributes_reply(m_c, xcb_get_window_attributes(m_c, window), nullptr);
        const bool result = attributes && attributes->map_state == XCB_MAP_STATE_VIEWABLE;
        std::free(attributes);
        return result;
    }

    // A request to the window manager, sent as EWMH asks: a client message to the root window.
    void sendToRoot(xcb_window_t window, const char* type, std::array<std::uint32_t, 5> data) const {
        xcb_client_message_event_t event{};
        event.response_type = XCB_CLIENT_MESSAGE;
        event.format = 32;
        event.window = window;
        event.type = atom(type);
        std::copy(data.begin(), data.end(), event.data.data32);
        xcb_send_event(m_c, 0, m_root,
                       XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT | XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY,
                       reinterpret_cast<const char*>(&event));
        xcb_flush(m_c);
    }

    bool managed(xcb_window_t window) const {
        return std::ranges::count(property(m_root, "_NET_CLIENT_LIST"), window) == 1;
    }

    // A top-level window of this client with an EWMH type and, when given, a class ("instance\0Class\0")
    // and a title; mapped again until the window manager lists it, as one still starting may drop a
    // map request.
    xcb_window_t openWindow(const char* type, std::uint16_t width, std::uint16_t height,
                            const std::string& classes = {}, const std::string& title = {}) const {
        const xcb_window_t w = xcb_generate_id(m_c);
        xcb_create_window(m_c, XCB_COPY_FROM_PARENT, w, m_root, 0, 0, width, height, 0,
                          XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT, 0, nullptr);
        auto set = [&](xcb_atom_t property, xcb_atom_t kind, std::uint8_t format, std::size_t n,
                       const void* data) {
            xcb_change_property(m_c, XCB_PROP_MODE_REPLACE, w, property, kind, format,
                                static_cast<std::uint32_t>(n), data);
        };
        if (!classes.empty()) set(XCB_ATOM_WM_CLASS, XCB_ATOM_STRING, 8, classes.size(), classes.data());
        if (!title.empty()) set(atom("_NET_WM_NAME"), atom("UTF8_STRING"), 8, title.size(), title.data());
        const std::uint32_t pid = static_cast<std::uint32_t>(::getpid());
        set(atom("_NET_WM_PID"), XCB_ATOM_CARDINAL, 32, 1, &pid);
        const xcb_atom_t windowType = atom(type);
        set(atom("_NET_WM_WINDOW_TYPE"), XCB_ATOM_ATOM, 32, 1, &windowType);
        for (int attempt = 0; attempt < 10 && !managed(w); ++attempt) {
            xcb_unmap_window(m_c, w);
            xcb_map_window(m_c, w);
            xcb_flush(m_c);
            pollUntil([&] { return managed(w); }, std::chrono::milliseconds(500));
        }
        return w;
    }

private:
    xcb_connection_t* m_c;
    xcb_window_t m_root = 0;
};

} // namespace tovrin::test
