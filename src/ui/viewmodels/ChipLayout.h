#pragma once

#include "sessions/AggregateStatus.h"

#include <optional>

namespace tovrin {

// Geometry of the floating chip in screen coordinates: origin at the top left of the virtual desktop,
// y downward.
struct ChipSize {
    double width = 0;
    double height = 0;

    bool operator==(const ChipSize&) const = default;
};

struct ChipPoint {
    double x = 0;
    double y = 0;

    bool operator==(const ChipPoint&) const = default;
};

struct ChipRect {
    double x = 0;
    double y = 0;
    double width = 0;
    double height = 0;

    double maxX() const { return x + width; }
    double maxY() const { return y + height; }
    ChipPoint topRight() const { return {maxX(), y}; }
    ChipSize size() const { return {width, height}; }

    bool operator==(const ChipRect&) const = default;
};

namespace ChipLayout {

inline constexpr ChipRect initialFrame{0, 0, 160, 48};
// Distance of the chip's top-right corner from the screen's top-right corner on first placement.
inline constexpr double screenInset = 16;
// Smaller measured changes are layout noise and would only jiggle the window.
inline constexpr double resizeThreshold = 0.5;

// What the chip's visibility depends on.
struct VisibilityInputs {
    bool showFloatingChip = true;
    bool chipOnlyWhenWaiting = false;
    AggregateStatus aggregate;
    bool hasSessions = false;
    // On a desktop without a tray the chip is the only way into the application, so it always shows.
    bool standsInForTray = false;
};

bool shouldShow(const VisibilityInputs& in);

enum class VisibilityChange { none, show, hide };

// Only a change of state touches the window; showing never activates the application.
VisibilityChange visibilityChange(bool shouldShow, bool isVisible);

// Window alpha from the opacity setting, a percentage. The store only bounds it from below, so it is
// capped here at fully opaque.
double alpha(double chipOpacity);

// The saved corner as read from the defaults: the presence of x decides whether there is one; a
// missing y reads as 0.
struct SavedCorner {
    std::optional<double> x;
    std::optional<double> y;
};

std::optional<ChipPoint> savedAnchor(const SavedCorner& saved);

// The frame of the given size whose top-right corner is at the anchor.
ChipRect frameWithTopRight(ChipPoint topRight, ChipSize size);

// Where the chip goes when placed: at the saved corner, else inset from the main screen's visible frame,
// else where it already is. The saved corner is not checked against the screens present now.
ChipRect placedFrame(const ChipRect& frame, const SavedCorner& saved,
                     const std::optional<ChipRect>& mainScreenVisibleFrame);

// The corner to persist after a move; only the corner, so a restart keeps it whatever the size.
inline ChipPoint cornerToSave(const ChipRect& frame) {
    return frame.topRight();
}

// Applies measured content sizes to the window, keeping its top-right corner, so the chip grows left
// and down. Holds the last size applied.
class Resizer {
public:
    // The new frame, or nothing when the size is to be ignored (degenerate or below the threshold).
    std::optional<ChipRect> resize(const ChipRect& frame, ChipSize measured);

    ChipSize lastSize() const { return lastSize_; }

private:
    ChipSize lastSize_;
};

} // namespace ChipLayout
} // namespace tovrin
