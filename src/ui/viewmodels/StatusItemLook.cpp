#include "ui/viewmodels/StatusItemLook.h"

namespace tovrin {

StatusItemLook StatusItemLook::of(const AggregateStatus& aggregate) {
    switch (aggregate.kind) {
    case AggregateStatus::Kind::waiting: {
        const std::string count = std::to_string(aggregate.count);
        return {"eye.fill", StatusItemColors::red, count, "Tovrin \u2014 " + count + " waiting"};
    }
    case AggregateStatus::Kind::working:
        return {"eye", StatusItemColors::green, std::nullopt, "Tovrin \u2014 working"};
    case AggregateStatus::Kind::neutral:
        break;
    }
    return {"eye.slash", StatusItemColors::secondary, std::nullopt, "Tovrin"};
}

} // namespace tovrin
