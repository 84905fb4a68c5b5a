#include "services/telemetry/DefaultSignalPayload.h"

#include "core/BuildInfo.h"

#include <charconv>
#include <cstdlib>

namespace tovrin {
namespace {

const char* boolText(bool value) {
    return value ? "true" : "false";
}

// Most facts go out twice: under the key older dashboards read, and under the namespaced one.
void setBoth(SignalParameters& p, const char* plain, const char* namespaced, const std::string& value) {
    p[plain] = value;
    p[namespaced] = value;
}

} // namespace

std::string DefaultSignalPayload::timeZone(long offsetSeconds) {
    const long minutes = std::labs(offsetSeconds) / 60;
    std::string text = std::string("UTC") + (offsetSeconds < 0 ? "-" : "+") + std::to_string(minutes / 60);
    if (const long rest = minutes % 60; rest != 0) text += (rest < 10 ? ":0" : ":") + std::to_string(rest);
    return text;
}

SignalParameters DefaultSignalPayload::calendar(const std::tm& local) {
    char week[4] = {};
    std::strftime(week, sizeof week, "%V", &local);
    const int weekday = (local.tm_wday + 6) % 7 + 1;
    return {
        {"TelemetryDeck.Calendar.dayOfMonth", std::to_string(local.tm_mday)},
        {"TelemetryDeck.Calendar.dayOfWeek", std::to_string(weekday)},
        {"TelemetryDeck.Calendar.dayOfYear", std::to_string(local.tm_yday + 1)},
        {"TelemetryDeck.Calendar.weekOfYear", std::to_string(std::atoi(week))},
        {"TelemetryDeck.Calendar.isWeekend", boolText(weekday >= 6)},
        {"TelemetryDeck.Calendar.monthOfYear", std::to_string(local.tm_mon + 1)},
        {"TelemetryDeck.Calendar.quarterOfYear", std::to_string(local.tm_mon / 3 + 1)},
        {"TelemetryDeck.Calendar.hourOfDay", std::to_string(local.tm_hour)},
    };
}

std::string DefaultSignalPayload::decimal(double value) {
    char buffer[32];
    const auto end = std::to_chars(buffer, buffer + sizeof buffer, value).ptr;
    std::string text(buffer, end);
    if (text.find_first_of(".en") == std::string::npos) text += ".0";
    return text;
}

SignalParameters DefaultSignalPayload::parameters(const SystemFacts& system, const DisplayFacts& display,
                                                  TimePoint moment) {
    SignalParameters p;
    setBoth(p, "platform", "TelemetryDeck.Device.platform", "Linux");
    setBoth(p, "operatingSystem", "TelemetryDeck.Device.operatingSystem", "Linux");
    setBoth(p, "isSimulator", "TelemetryDeck.RunContext.isSimulator", "false");
    setBoth(p, "isDebug", "TelemetryDeck.RunContext.isDebug", "false");
    setBoth(p, "targetEnvironment", "TelemetryDeck.RunContext.targetEnvironment", "native");
    setBoth(p, "architecture", "TelemetryDeck.Device.architecture", system.architecture);
    p["TelemetryDeck.Device.orientation"] = "Fixed";
    setBoth(p, "telemetryClientVersion", "TelemetryDeck.SDK.version", clientVersion);
    p["TelemetryDeck.SDK.name"] = clientName;
    p["TelemetryDeck.SDK.nameAndVersion"] = std::string(clientName) + " " + clientVersion;

    setBoth(p, "systemVersion", "TelemetryDeck.Device.systemVersion", system.systemVersion);
    setBoth(p, "majorSystemVersion", "TelemetryDeck.Device.systemMajorVersion", system.majorSystemVersion);
    setBoth(p, "majorMinorSystemVersion", "TelemetryDeck.Device.systemMajorMinorVersion",
            system.majorMinorSystemVersion);
    const std::string version(BuildInfo::version), build(BuildInfo::buildNumber);
    setBoth(p, "appVersion", "TelemetryDeck.AppInfo.version", version);
    setBoth(p, "buildNumber", "TelemetryDeck.AppInfo.buildNumber", build);
    p["TelemetryDeck.AppInfo.versionAndBuildNumber"] = version + " (build " + build + ")";
    // Neither a beta channel nor a store hands out the Linux build.
    setBoth(p, "isTestFlight", "TelemetryDeck.RunContext.isTestFlight", "false");
    setBoth(p, "isAppStore", "TelemetryDeck.RunContext.isAppStore", "false");
    setBoth(p, "modelName", "TelemetryDeck.Device.modelName", system.modelName);
    setBoth(p, "locale", "TelemetryDeck.RunContext.locale", system.locale.identifier);
    setBoth(p, "region", "TelemetryDeck.UserPreference.region", system.locale.region);
    setBoth(p, "appLanguage", "TelemetryDeck.RunContext.language", system.locale.language);
    setBoth(p, "preferredLanguage", "TelemetryDeck.UserPreference.language", system.locale.preferredLanguage);

    p["TelemetryDeck.Device.screenResolutionWidth"] = decimal(display.screenWidth);
    p["TelemetryDeck.Device.screenResolutionHeight"] = decimal(display.screenHeight);
    p["TelemetryDeck.Device.screenScaleFactor"] = decimal(display.screenScaleFactor);
    p["TelemetryDeck.UserPreference.colorScheme"] = display.darkColorScheme ? "Dark" : "Light";
    p["TelemetryDeck.UserPreference.layoutDirection"] =
        display.rightToLeftLayout ? "rightToLeft" : "leftToRight";
    p["TelemetryDeck.Accessibility.isReduceMotionEnabled"] = boolText(display.reduceMotion);
    p["TelemetryDeck.Accessibility.isInvertColorsEnabled"] = boolText(display.invertColors);

    const std::time_t seconds = std::chrono::system_clock::to_time_t(moment);
    std::tm local{};
    if (::localtime_r(&seconds, &local)) {
        p["TelemetryDeck.Device.timeZone"] = timeZone(local.tm_gmtoff);
        p.merge(calendar(local));
    }
    return p;
}

} // namespace tovrin
