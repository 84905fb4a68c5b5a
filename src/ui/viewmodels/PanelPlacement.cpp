#include "ui/viewmodels/PanelPlacement.h"

#include <algorithm>

namespace tovrin::PanelPlacement {

PanelRect frame(const PanelRect& anchor, int width, int height, const PanelRect& available) {
    PanelRect panel{0, 0, std::min(width, available.width), std::min(height, available.height)};

    const bool anchorInUpperHalf = anchor.y + anchor.height / 2 < available.y + available.height / 2;
    panel.y = anchorInUpperHalf ? anchor.bottom() + gap : anchor.y - gap - panel.height;
    panel.x = anchor.x + anchor.width / 2 - panel.width / 2;

    panel.x = std::clamp(panel.x, available.x, available.right() - panel.width);
    panel.y = std::clamp(panel.y, available.y, available.bottom() - panel.height);
    return panel;
}

} // namespace tovrin::PanelPlacement
