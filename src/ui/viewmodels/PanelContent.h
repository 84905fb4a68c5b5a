#pragma once

#include "sessions/AggregateStatus.h"
#include "sessions/SessionReading.h"
#include "ui/viewmodels/ForgePalette.h"

#include <array>
#include <optional>
#include <string>
#include <string_view>

namespace tovrin::PanelContent {

inline constexpr std::string_view brandText = "TOVRIN";
inline constexpr std::string_view emptyStateText = "No agents are stirring.";

// The brand line burns red while anything waits, amber while anything works, and lies cold otherwise.
std::optional<FlamePalette> aggregateFlame(const AggregateStatus& aggregate);

// Under the list: a host whose sessions can't be had, and why.
std::string unreachableHostNotice(const UnreachableHost& away);

struct LabelledSymbol {
    std::string_view text;
    std::string_view symbol;

    bool operator==(const LabelledSymbol&) const = default;
};

// The toggle offers the opposite of the floating window's current visibility.
LabelledSymbol floatingWindowToggle(bool showFloatingChip);

// The footer's buttons, row by row: preferences, feedback, about, quit.
inline constexpr std::array<LabelledSymbol, 4> footerItems{{
    {"Preferences", "gearshape"},
    {"Feedback", "bubble.left"},
    {"About", "info.circle"},
    {"Quit", "power"},
}};

} // namespace tovrin::PanelContent
