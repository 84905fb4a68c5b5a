#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace tovrin {

// A normal top-level window of another application.
struct WindowInfo {
    std::uint64_t id = 0;
    std::string title;         // _NET_WM_NAME, else WM_NAME
    std::string classInstance; // WM_CLASS instance, e.g. "code"
    std::string className;     // WM_CLASS class, e.g. "Code"
    std::optional<std::int64_t> pid;
};

// The desktop's windows (X11 EWMH on Linux). Without an X server every call answers "none".
class WindowSystem {
public:
    virtual ~WindowSystem() = default;
    virtual bool available() const = 0;
    // Normal top-level windows in stacking order of the client list.
    virtual std::vector<WindowInfo> normalWindows() const = 0;
    // Asks the window manager to activate (raise and focus) the window.
    virtual bool activate(std::uint64_t windowId) = 0;
};

} // namespace tovrin
