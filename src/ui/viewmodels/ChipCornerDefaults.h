#pragma once

#include "core/DefaultsStore.h"
#include "ui/viewmodels/ChipLayout.h"

namespace tovrin {

// The floating chip's top-right corner in the user defaults: written on every move of the window and
// read when it is placed. It stays out of the published preferences, since nothing observes it.
namespace ChipCornerDefaults {

inline constexpr const char* xKey = "chipTopRightX";
inline constexpr const char* yKey = "chipTopRightY";

// A stored value that is not a number reads as 0, as a missing y does.
ChipLayout::SavedCorner read(const DefaultsStore& defaults);
void write(DefaultsStore& defaults, ChipPoint corner);

} // namespace ChipCornerDefaults
} // namespace tovrin
