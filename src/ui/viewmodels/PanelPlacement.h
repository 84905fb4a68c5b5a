#pragma once

namespace tovrin {

// Screen rectangles in logical pixels, y downward.
struct PanelRect {
    int x = 0;
    int y = 0;
    int width = 0;
    int height = 0;

    int right() const { return x + width; }
    int bottom() const { return y + height; }

    bool operator==(const PanelRect&) const = default;
};

namespace PanelPlacement {

// Space between the tray icon and the panel.
inline constexpr int gap = 4;

// Where the panel opens for a tray icon at `anchor`: below an icon in the upper half of the screen
// and above one in the lower half (a bottom panel), centred on it, then moved wholly inside
// `available`. A panel taller than the available area is cut to its height.
PanelRect frame(const PanelRect& anchor, int width, int height, const PanelRect& available);

} // namespace PanelPlacement
} // namespace tovrin
