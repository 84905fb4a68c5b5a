#include "ui/viewmodels/ChipHeader.h"

#include "ui/viewmodels/TrayViewModel.h"

namespace tovrin::ChipHeader {

std::string summaryText(std::size_t waiting, std::size_t working, std::size_t idle) {
    std::string text;
    const auto append = [&](std::size_t count, std::string_view label) {
        if (count == 0) return;
        if (!text.empty()) text += " \u00b7 ";
        text += std::to_string(count);
        text += label;
    };
    append(waiting, " waiting");
    append(working, " working");
    append(idle, " idle");
    return text.empty() ? "no agents" : text;
}

Content content(AggregateStatus::Kind aggregate, std::size_t waiting, std::size_t working, std::size_t idle,
                bool expanded) {
    Content result;
    result.summary = summaryText(waiting, working, idle);
    switch (aggregate) {
    case AggregateStatus::Kind::waiting:
        result.symbol = "eye.fill";
        result.flame = FlamePalette::red();
        result.tone = Tone::onFlame;
        break;
    case AggregateStatus::Kind::working:
        result.symbol = "eye";
        result.flame = FlamePalette::amber();
        result.tone = Tone::onFlame;
        break;
    case AggregateStatus::Kind::neutral:
        result.symbol = "eye.slash";
        result.tone = Tone::secondary;
        break;
    }
    if (waiting + working + idle > 0) result.chevron = expanded ? "chevron.up" : "chevron.down";
    return result;
}

Content content(const TrayViewModel& model, bool expanded) {
    return content(model.aggregate().kind, model.waiting().size(), model.working().size(),
                   model.idle().size(), expanded);
}

bool toggledExpanded(bool expanded, bool hasSessions) {
    return hasSessions ? !expanded : expanded;
}

bool showsList(bool expanded, bool hasSessions) {
    return expanded && hasSessions;
}

} // namespace tovrin::ChipHeader
