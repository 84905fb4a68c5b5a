#include "ui/viewmodels/TrayIconLook.h"

namespace tovrin {

TrayIconLook TrayIconLook::of(const AggregateStatus& aggregate) {
    switch (aggregate.kind) {
    case AggregateStatus::Kind::waiting: {
        const std::string count = std::to_string(aggregate.count);
        return {"eye.fill", TrayIconColors::red, count, "Tovrin \u2014 " + count + " waiting"};
    }
    case AggregateStatus::Kind::working:
        return {"eye", TrayIconColors::green, std::nullopt, "Tovrin \u2014 working"};
    case AggregateStatus::Kind::neutral:
        break;
    }
    return {"eye.slash", TrayIconColors::secondary, std::nullopt, "Tovrin"};
}

} // namespace tovrin
