#include "platform/x11/XcbChipPinner.h"

#include "platform/x11/XcbConnection.h"

#include <algorithm>
#include <cstdlib>
#include <vector>

namespace tovrin {

namespace {

// Indexes into the connection's atoms, in the order of their names below.
enum Atom : std::size_t {
    Desktop,
    State,
    Sticky,
    Above,
    SkipTaskbar,
    SkipPager,
};

std::vector<std::string> atomNames() {
    return {"_NET_WM_DESKTOP",
            "_NET_WM_STATE",
            "_NET_WM_STATE_STICKY",
            "_NET_WM_STATE_ABOVE",
            "_NET_WM_STATE_SKIP_TASKBAR",
            "_NET_WM_STATE_SKIP_PAGER"};
}

constexpr std::uint32_t allDesktops = 0xFFFFFFFF;
constexpr std::uint32_t netWmStateAdd = 1;
// Source indication 2: a pager acting for the user, which window managers obey without their
// own policies getting in the way.
constexpr std::uint32_t sourcePager = 2;

} // namespace

XcbChipPinner::XcbChipPinner(std::optional<std::string> display)
    : m_connection(std::make_unique<XcbConnection>(std::move(display), atomNames())) {}

XcbChipPinner::~XcbChipPinner() = default;

void XcbChipPinner::pin(std::uint64_t windowId) {
    XcbConnection& x = *m_connection;
    xcb_connection_t* c = x.get();
    if (!c || windowId == 0 || windowId > UINT32_MAX) return;
    const auto window = static_cast<xcb_window_t>(windowId);
    const std::vector<xcb_atom_t> wanted{x.atom(Sticky), x.atom(Above), x.atom(SkipTaskbar),
                                         x.atom(SkipPager)};

    auto* attributes = xcb_get_window_attributes_reply(c, xcb_get_window_attributes(c, window), nullptr);
    if (!attributes) {
        x.dropEvents();
        return;
    }
    const bool unmapped = attributes->map_state == XCB_MAP_STATE_UNMAPPED;
    std::free(attributes);

    if (unmapped) {
        // Hints on the window itself; the toolkit merges its own states into this list when it maps
        // the window, and a window manager reads both when it takes the window on.
        xcb_change_property(c, XCB_PROP_MODE_REPLACE, window, x.atom(Desktop), XCB_ATOM_CARDINAL, 32, 1,
                            &allDesktops);
        auto states =
            valuesOf<xcb_atom_t>(propertyReply(c, requestProperty(c, window, x.atom(State), XCB_ATOM_ATOM)));
        for (xcb_atom_t a : wanted)
            if (std::ranges::find(states, a) == states.end()) states.push_back(a);
        xcb_change_property(c, XCB_PROP_MODE_REPLACE, window, x.atom(State), XCB_ATOM_ATOM, 32,
                            static_cast<std::uint32_t>(states.size()), states.data());
        // A round trip, so that the hints are in place before the toolkit's map request arrives on
        // its own connection.
        std::free(xcb_get_input_focus_reply(c, xcb_get_input_focus(c), nullptr));
    } else {
        x.sendToRoot(window, x.atom(Desktop), {allDesktops, sourcePager, 0, 0, 0});
        x.sendToRoot(window, x.atom(State), {netWmStateAdd, x.atom(Sticky), x.atom(Above), sourcePager, 0});
        x.sendToRoot(window, x.atom(State),
                     {netWmStateAdd, x.atom(SkipTaskbar), x.atom(SkipPager), sourcePager, 0});
        xcb_flush(c);
    }
    x.dropEvents();
}

} // namespace tovrin
