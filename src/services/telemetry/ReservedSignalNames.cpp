#include "services/telemetry/ReservedSignalNames.h"

#include "core/AsciiText.h"

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

bool isReserved(const std::string& lower) {
    return std::find(reservedNames.begin(), reservedNames.end(), lower) != reservedNames.end();
}

} // namespace

std::optional<std::string> ReservedSignalNames::nameWarning(std::string_view name) {
    const auto lower = AsciiText::lowercased(name);
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
    const auto lower = AsciiText::lowercased(key);
    if (lower.starts_with(reservedPrefix))
        return "Sending parameter with reserved key prefix 'TelemetryDeck.' will cause unexpected behavior. "
               "Please use another prefix instead.";
    if (isReserved(lower))
        return "Sending parameter with reserved key '" + std::string(key) +
               "' will cause unexpected behavior. Please use another key instead.";
    return std::nullopt;
}

} // namespace tovrin
