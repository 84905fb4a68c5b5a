#include "ui/viewmodels/PanelContent.h"

namespace tovrin::PanelContent {

std::optional<FlamePalette> aggregateFlame(const AggregateStatus& aggregate) {
    switch (aggregate.kind) {
    case AggregateStatus::Kind::waiting:
        return FlamePalette::red();
    case AggregateStatus::Kind::working:
        return FlamePalette::amber();
    case AggregateStatus::Kind::neutral:
        break;
    }
    return std::nullopt;
}

LabelledSymbol floatingWindowToggle(bool showFloatingChip) {
    if (showFloatingChip) return {"Hide floating window", "eye.slash"};
    return {"Show floating window", "eye"};
}

std::string unreachableHostNotice(const UnreachableHost& away) {
    return away.host + " can't be reached" + (away.problem.empty() ? "" : ": " + away.problem);
}

} // namespace tovrin::PanelContent
