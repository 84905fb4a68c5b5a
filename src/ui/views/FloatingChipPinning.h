#pragma once

#include <cstdint>

namespace tovrin {

// What the chip's window needs of the window manager beyond what the toolkit asks for: to stand on
// every workspace, above normal windows, and out of task bars and pagers. Implemented on X11 outside
// the widgets library; elsewhere the chip goes without.
class FloatingChipPinning {
public:
    virtual ~FloatingChipPinning() = default;

    // Called before each time the window is mapped and again once it shows: an unmapped window gets
    // the hints that a window manager reads when it takes the window on, a mapped one the requests
    // that a running manager obeys. `windowId` is the native window.
    virtual void pin(std::uint64_t windowId) = 0;
};

} // namespace tovrin
