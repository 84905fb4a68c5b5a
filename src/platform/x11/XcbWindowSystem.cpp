#include "platform/x11/XcbWindowSystem.h"

#include "platform/x11/XcbConnection.h"

#include <algorithm>
#include <cstdlib>
#include <string_view>

namespace tovrin {

namespace {

// Indexes into the connection's atoms, in the order of their names below.
enum Atom : std::size_t {
    ClientList,
    WindowType,
    WindowTypeNormal,
    WmName,
    Utf8String,
    WmPid,
    ActiveWindow,
};

std::vector<std::string> atomNames() {
    return {"_NET_CLIENT_LIST", "_NET_WM_WINDOW_TYPE", "_NET_WM_WINDOW_TYPE_NORMAL", "_NET_WM_NAME",
            "UTF8_STRING",      "_NET_WM_PID",         "_NET_ACTIVE_WINDOW"};
}

} // namespace

XcbWindowSystem::XcbWindowSystem(std::optional<std::string> display)
    : m_connection(std::make_unique<XcbConnection>(std::move(display), atomNames())) {}

XcbWindowSystem::~XcbWindowSystem() = default;

bool XcbWindowSystem::available() const {
    std::lock_guard lock(m_mutex);
    return m_connection->get() != nullptr;
}

std::vector<WindowInfo> XcbWindowSystem::normalWindows() const {
    std::lock_guard lock(m_mutex);
    XcbConnection& x = *m_connection;
    xcb_connection_t* c = x.get();
    if (!c) return {};

    const auto clients = valuesOf<xcb_window_t>(
        propertyReply(c, requestProperty(c, x.root(), x.atom(ClientList), XCB_ATOM_WINDOW)));

    // All requests first, then the replies: one round trip for the whole list.
    struct Pending {
        xcb_get_property_cookie_t type, transientFor, netName, name, wmClass, pid;
    };
    std::vector<Pending> pending;
    pending.reserve(clients.size());
    for (xcb_window_t w : clients) {
        pending.push_back({requestProperty(c, w, x.atom(WindowType), XCB_ATOM_ATOM),
                           requestProperty(c, w, XCB_ATOM_WM_TRANSIENT_FOR, XCB_ATOM_WINDOW),
                           requestProperty(c, w, x.atom(WmName), x.atom(Utf8String)),
                           requestProperty(c, w, XCB_ATOM_WM_NAME, XCB_GET_PROPERTY_TYPE_ANY),
                           requestProperty(c, w, XCB_ATOM_WM_CLASS, XCB_ATOM_STRING),
                           requestProperty(c, w, x.atom(WmPid), XCB_ATOM_CARDINAL)});
    }

    std::vector<WindowInfo> windows;
    for (std::size_t i = 0; i < clients.size(); ++i) {
        const Pending& p = pending[i];
        const auto types = valuesOf<xcb_atom_t>(propertyReply(c, p.type));
        const bool transient = !valuesOf<xcb_window_t>(propertyReply(c, p.transientFor)).empty();
        XcbPropertyReply netName = propertyReply(c, p.netName);
        XcbPropertyReply name = propertyReply(c, p.name);
        XcbPropertyReply wmClass = propertyReply(c, p.wmClass);
        XcbPropertyReply pid = propertyReply(c, p.pid);

        // Without a declared type, a window that belongs to another is a dialog.
        const bool normal =
            types.empty() ? !transient : std::ranges::find(types, x.atom(WindowTypeNormal)) != types.end();
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
        if (const auto pids = valuesOf<std::uint32_t>(pid); !pids.empty()) info.pid = pids.front();
        windows.push_back(std::move(info));
    }
    x.dropEvents();
    return windows;
}

bool XcbWindowSystem::activate(std::uint64_t windowId) {
    std::lock_guard lock(m_mutex);
    XcbConnection& x = *m_connection;
    xcb_connection_t* c = x.get();
    if (!c || windowId == 0 || windowId > UINT32_MAX) return false;
    const auto window = static_cast<xcb_window_t>(windowId);

    // Source indication 2: a pager or taskbar acting for the user, which window managers obey
    // without their focus-stealing rules.
    x.sendToRoot(window, x.atom(ActiveWindow), {2, XCB_CURRENT_TIME, XCB_WINDOW_NONE, 0, 0});
    // Raise too, for window managers that focus without restacking; a managing WM redirects it.
    const std::uint32_t above = XCB_STACK_MODE_ABOVE;
    xcb_configure_window(c, window, XCB_CONFIG_WINDOW_STACK_MODE, &above);

    // A round trip, so that a vanished window or a broken connection shows here.
    xcb_generic_error_t* error = nullptr;
    auto* attributes = xcb_get_window_attributes_reply(c, xcb_get_window_attributes(c, window), &error);
    const bool ok = attributes != nullptr && error == nullptr;
    std::free(attributes);
    std::free(error);
    x.dropEvents();
    return ok;
}

} // namespace tovrin
