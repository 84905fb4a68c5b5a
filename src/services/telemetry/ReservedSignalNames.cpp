#include "services/telemetry/ReservedSignalNames.h"

#include <algorithm>
#include <array>

namespace tovrin {
namespace {

constexpr std::string_view reservedPrefix = "telemetrydeck.";

constexpr std::array<std::string_view, 25> reservedNames = {
    "type",
    "clientuser",
    "appid",
    "sessionid",
    "floatvalue",
    "newsessionbegan",
    "platform",
    "systemversion",
    "majorsystemversion",
    "majorminorsystemversion",
    "appversion",
    "buildnumber",
    "issimulator",
    "isdebug",
    "istestflight",
    "isappstore",
    "modelname",
    "architecture",
    "operatingsystem",
    "targetenvironment",
    "locale",
    "region",
    "applanguage",
    "preferredlanguage",
    "telemetryclientversion",
};

std::string lowered(std::string_view text) {
    std::string lower(text);
    std::transform(lower.begin(), lower.end(), lower.begin(), [](unsigned char c) {
        return c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : static_cast<char>(c);
    });
    return lower;
}

bool isReserved(const std::string& lower) {
    return std::find(reservedNames.begin(), reservedNames.end(), lower) != reservedNames.end();
}

} // namespace

std::optional<std::string> ReservedSignalNames::nameWarning(std::string_view name) {
    const auto lower = lowered(name);
    if (lower.starts_with(reservedPrefix))
        return "Sending signal with reserved prefix 'TelemetryDeck.' will cause unexpected behavior. Please "
               "use "
               "another prefix instead.";
    if (isReserved(lower))
        return "Sending signal with reserved name '" + std::string(name) +
               "' will cause unexpected behavior. Please use another name instead.";
    return std::nullopt;
}

std::optional<std::string> ReservedSignalNames::keyWarning(std::string_view key) {
    const auto lower = lowered(key);
    if (lower.starts_with(reservedPrefix))
        return "Sending parameter with reserved key prefix 'TelemetryDeck.' will cause unexpected behavior. "
               "Please use another prefix instead.";
    if (isReserved(lower))
        return "Sending parameter with reserved key '" + std::string(key) +
               "' will cause unexpected behavior. Please use another key instead.";
    return std::nullopt;
}

} // namespace tovrin
