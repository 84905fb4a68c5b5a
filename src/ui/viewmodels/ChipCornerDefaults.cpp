#include "ui/viewmodels/ChipCornerDefaults.h"

namespace tovrin::ChipCornerDefaults {

namespace {

std::optional<double> number(const DefaultsStore& defaults, const char* key) {
    const auto value = defaults.object(key);
    if (!value) return std::nullopt;
    return value->is_number() ? value->get<double>() : 0.0;
}

} // namespace

ChipLayout::SavedCorner read(const DefaultsStore& defaults) {
    return {number(defaults, xKey), number(defaults, yKey)};
}

void write(DefaultsStore& defaults, ChipPoint corner) {
    defaults.set(xKey, corner.x);
    defaults.set(yKey, corner.y);
}

} // namespace tovrin::ChipCornerDefaults
