#pragma once

#include "core/Clock.h"

#include <string>

namespace tovrin::RelativeTime {

// "just now", "42s ago", "3m ago", "2h ago", "5d ago".
std::string string(TimePoint since, TimePoint now);

} // namespace tovrin::RelativeTime
