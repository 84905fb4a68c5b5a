#include "ui/viewmodels/RelativeTime.h"

#include <chrono>

namespace tovrin::RelativeTime {

std::string string(TimePoint since, TimePoint now) {
    const long long s = std::chrono::duration_cast<std::chrono::seconds>(now - since).count();
    if (s < 5) return "just now";
    if (s < 60) return std::to_string(s) + "s ago";
    if (s < 3600) return std::to_string(s / 60) + "m ago";
    if (s < 86400) return std::to_string(s / 3600) + "h ago";
    return std::to_string(s / 86400) + "d ago";
}

} // namespace tovrin::RelativeTime
