#pragma once

#include "core/Clock.h"
#include "services/telemetry/TelemetrySignaling.h"

#include <nlohmann/json.hpp>
#include <optional>
#include <string>
#include <vector>

namespace tovrin {

// One queued signal, as the service receives it.
struct SignalPostBody {
    TimePoint receivedAt;
    std::string appID;
    std::string clientUser; // the hashed user id
    std::string sessionID;  // upper-case UUID text
    std::string type;
    std::optional<double> floatValue;
    SignalParameters payload;
    std::string isTestMode; // "true" or "false"
};

// The wire form: keys in the service's order, `floatValue` only when present, and dates as
// "2026-11-23T09:05:00+0000" in GMT.
nlohmann::ordered_json wireJson(const SignalPostBody& body);
// A batch as the request body: a JSON array. Bytes that are not UTF-8 become U+FFFD, so that one odd
// fact can't keep a batch from ever being sent.
std::string encodeBatch(const std::vector<SignalPostBody>& batch);

// The disk cache's form: the same keys, with the date as seconds since 2001-01-01 GMT so that it
// keeps its fraction.
nlohmann::ordered_json cacheJson(const SignalPostBody& body);
std::optional<SignalPostBody> signalFromCacheJson(const nlohmann::json& json);

} // namespace tovrin
