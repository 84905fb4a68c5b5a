#pragma once

#include <functional>
#include <string>

namespace tovrin {

enum class LogLevel { debug, info, error };

// Where the telemetry client's lines go: those at or above the threshold are written. Any thread.
struct LogHandler {
    using Write = std::function<void(LogLevel level, const std::string& message)>;

    LogLevel threshold = LogLevel::info;
    Write write; // empty: standard error, which the desktop session's journal keeps

    bool enabled(LogLevel level) const { return level >= threshold; }
    void log(LogLevel level, const std::string& message) const;
};

} // namespace tovrin
