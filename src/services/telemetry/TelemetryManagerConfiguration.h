#pragma once

#include "core/Clock.h"
#include "services/telemetry/TelemetryLog.h"
#include "services/telemetry/TelemetrySignaling.h"

#include <cstddef>
#include <functional>
#include <optional>
#include <string>

namespace tovrin {

// The settings of one telemetry client, with the values the application runs with.
struct TelemetryManagerConfiguration {
    // An absent salt is empty and an absent base URL is the build's ingest endpoint.
    explicit TelemetryManagerConfiguration(std::string appID,
                                           std::optional<std::string> saltText = std::nullopt,
                                           std::optional<std::string> baseURL = std::nullopt,
                                           std::optional<std::string> pathNamespace = std::nullopt);

    // The name of the client's own store: "com.telemetrydeck." and the last 12 hex digits of the
    // SHA-256 of the app id, so that two app ids never share retention facts or a user id.
    static std::string suiteName(const std::string& appID);

    std::string telemetryAppID;
    std::string apiBaseURL;
    std::optional<std::string> namespace_;
    std::string salt;
    std::optional<std::string> defaultUser;
    std::optional<std::string> defaultSignalPrefix;
    std::optional<std::string> defaultParameterPrefix;
    std::function<SignalParameters()> defaultParameters = [] { return SignalParameters{}; };
    bool sendNewSessionBeganSignal = true;
    // The first session's id; the manager replaces it when the session starts.
    std::string sessionID;
    std::size_t cacheLimit = 10000;
    Seconds transmitInterval{10};
    Seconds maxBackoffInterval{300};
    bool testMode = false;
    bool analyticsDisabled = false;
    bool reservedParameterWarningsEnabled = true;
    bool sessionStatsEnabled = true;
    LogHandler logHandler;
};

} // namespace tovrin
