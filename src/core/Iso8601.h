#pragma once

#include "core/Clock.h"

#include <optional>
#include <string>
#include <string_view>

namespace tovrin {

// Internet date-time to the second: "2026-11-22T20:54:38Z" or with a numeric offset
// "+01:00". Fractional seconds, lower-case separators, out-of-range fields and instants the
// clock can't hold are refused.
std::optional<TimePoint> parseIso8601(std::string_view text);

// The same form in UTC with "Z"; sub-second parts are dropped.
std::string formatIso8601(TimePoint time);

} // namespace tovrin
