#include "services/telemetry/TelemetryManagerConfiguration.h"

#include "core/BuildInfo.h"
#include "core/Sha256.h"
#include "core/Uuid.h"

#include <utility>

namespace tovrin {

TelemetryManagerConfiguration::TelemetryManagerConfiguration(std::string appID,
                                                             std::optional<std::string> saltText,
                                                             std::optional<std::string> baseURL,
                                                             std::optional<std::string> pathNamespace)
    : telemetryAppID(std::move(appID)),
      apiBaseURL(baseURL ? std::move(*baseURL) : std::string(BuildInfo::telemetryEndpoint)),
      namespace_(std::move(pathNamespace)), salt(saltText ? std::move(*saltText) : std::string()),
      sessionID(randomUuidString()) {}

std::string TelemetryManagerConfiguration::suiteName(const std::string& appID) {
    return "com.telemetrydeck." + sha256Hex(appID).substr(64 - 12);
}

} // namespace tovrin
