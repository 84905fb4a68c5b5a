#pragma once

#include "core/Clock.h"

#include <string>

namespace tovrin {

// Local wall-clock time as HH:MM:SS, for terminal lines.
std::string localClockTime(TimePoint t);

} // namespace tovrin
