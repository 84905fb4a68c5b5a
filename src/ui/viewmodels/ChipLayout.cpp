#include "ui/viewmodels/ChipLayout.h"

#include <algorithm>
#include <cmath>

namespace tovrin::ChipLayout {

bool shouldShow(const VisibilityInputs& in) {
    if (in.standsInForTray) return true;
    if (!in.showFloatingChip) return false;
    if (in.chipOnlyWhenWaiting) return in.aggregate.kind == AggregateStatus::Kind::waiting;
    return in.hasSessions;
}

VisibilityChange visibilityChange(bool shouldShow, bool isVisible) {
    if (shouldShow && !isVisible) return VisibilityChange::show;
    if (!shouldShow && isVisible) return VisibilityChange::hide;
    return VisibilityChange::none;
}

double alpha(double chipOpacity) {
    return std::clamp(chipOpacity / 100.0, 0.0, 1.0);
}

std::optional<ChipPoint> savedAnchor(const SavedCorner& saved) {
    if (!saved.x) return std::nullopt;
    return ChipPoint{*saved.x, saved.y.value_or(0.0)};
}

ChipRect frameWithTopRight(ChipPoint topRight, ChipSize size) {
    return {topRight.x - size.width, topRight.y, size.width, size.height};
}

ChipRect placedFrame(const ChipRect& frame, const SavedCorner& saved,
                     const std::optional<ChipRect>& mainScreenVisibleFrame) {
    if (auto anchor = savedAnchor(saved)) return frameWithTopRight(*anchor, frame.size());
    if (mainScreenVisibleFrame) {
        const ChipPoint corner{mainScreenVisibleFrame->maxX() - screenInset,
                               mainScreenVisibleFrame->y + screenInset};
        return frameWithTopRight(corner, frame.size());
    }
    return frame;
}

std::optional<ChipRect> Resizer::resize(const ChipRect& frame, ChipSize measured) {
    if (!(measured.width > 1 && measured.height > 1)) return std::nullopt;
    if (std::abs(measured.width - lastSize_.width) < resizeThreshold &&
        std::abs(measured.height - lastSize_.height) < resizeThreshold)
        return std::nullopt;
    lastSize_ = measured;
    return frameWithTopRight(frame.topRight(), measured);
}

} // namespace tovrin::ChipLayout
