#pragma once

#include "core/Color.h"
#include "sessions/AggregateStatus.h"

#include <optional>
#include <string>

namespace tovrin {

// The tray icon at a glance: one glyph in the desktop's signal colours, and the number of waiting
// sessions, which a tray can only show inside the icon.
struct TrayIconLook {
    std::string symbol;
    Color color;
    std::optional<std::string> count;
    std::string toolTip;

    bool operator==(const TrayIconLook&) const = default;

    static TrayIconLook of(const AggregateStatus& aggregate);
};

// Signal colours that read on light and dark panels alike.
namespace TrayIconColors {
inline constexpr Color red{1.0, 0.231, 0.188, 1};
inline constexpr Color green{0.204, 0.78, 0.349, 1};
inline constexpr Color secondary{0.6, 0.6, 0.62, 1};
} // namespace TrayIconColors

} // namespace tovrin
