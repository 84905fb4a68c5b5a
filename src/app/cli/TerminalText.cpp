#include "app/cli/TerminalText.h"

#include <chrono>
#include <ctime>

namespace tovrin {

std::string localClockTime(TimePoint t) {
    const std::time_t seconds = std::chrono::system_clock::to_time_t(t);
    std::tm local{};
    ::localtime_r(&seconds, &local);
    char buffer[16];
    std::strftime(buffer, sizeof buffer, "%H:%M:%S", &local);
    return buffer;
}

} // namespace tovrin
