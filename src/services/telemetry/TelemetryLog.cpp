#include "services/telemetry/TelemetryLog.h"

#include <cstdio>

namespace tovrin {

void LogHandler::log(LogLevel level, const std::string& message) const {
    if (!enabled(level)) return;
    if (write) {
        write(level, message);
        return;
    }
    static constexpr const char* names[] = {"debug", "info", "error"};
    std::fprintf(stderr, "Tovrin telemetry [%s]: %s\n", names[static_cast<int>(level)], message.c_str());
}

} // namespace tovrin
