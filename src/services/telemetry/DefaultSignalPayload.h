#pragma once

#include "core/Clock.h"
#include "services/telemetry/DeviceFacts.h"
#include "services/telemetry/TelemetrySignaling.h"

#include <ctime>
#include <string>

namespace tovrin {

// The device, application and calendar facts that every signal carries, each under its plain key
// and its "TelemetryDeck." key. The retention facts come from the session statistics.
struct DefaultSignalPayload {
    static constexpr const char* clientName = "TovrinTelemetryClient";
    static constexpr const char* clientVersion = "2.14.1";

    // `moment` is when the signal was taken; its calendar fields are those of the local time zone.
    static SignalParameters parameters(const SystemFacts& system, const DisplayFacts& display,
                                       TimePoint moment);

    // "UTC+1", "UTC-3:30", "UTC+0": the offset of the local time from GMT.
    static std::string timeZone(long offsetSeconds);
    // The Gregorian calendar fields of a local time; days and weeks numbered as ISO 8601 does
    // (Monday is day 1).
    static SignalParameters calendar(const std::tm& local);
    // A screen measure as decimal text: "1920.0", "1.25".
    static std::string decimal(double value);
};

} // namespace tovrin
