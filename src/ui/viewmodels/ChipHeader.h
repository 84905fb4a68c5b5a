#pragma once

#include "sessions/AggregateStatus.h"
#include "ui/viewmodels/ForgePalette.h"

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace tovrin {

class TrayViewModel;

// The one line the floating chip shows collapsed, and when it unfolds.
namespace ChipHeader {

// How the header's text and symbols are drawn: light with a small dark shadow over a flame, or a
// quiet grey on the bare body.
enum class Tone { onFlame, secondary };

struct Content {
    std::string symbol;
    std::string summary;
    std::optional<FlamePalette> flame;
    Tone tone = Tone::secondary;
    // Absent while there is nothing to unfold.
    std::optional<std::string> chevron;

    bool operator==(const Content&) const = default;
};

// "2 waiting · 1 idle"; parts with a zero count are left out; "no agents" when all are zero.
std::string summaryText(std::size_t waiting, std::size_t working, std::size_t idle);

Content content(AggregateStatus::Kind aggregate, std::size_t waiting, std::size_t working, std::size_t idle,
                bool expanded);
Content content(const TrayViewModel& model, bool expanded);

// A tap on the header unfolds or folds the chip, but only when there is a list to show.
bool toggledExpanded(bool expanded, bool hasSessions);

// The list and footer stand below the header only while unfolded and while there are sessions; the
// unfolded state itself outlives a moment without sessions.
bool showsList(bool expanded, bool hasSessions);

} // namespace ChipHeader
} // namespace tovrin
