#include "services/telemetry/TelemetryAnalyticsReporter.h"

#include <utility>

namespace tovrin {

TelemetryAnalyticsReporter::TelemetryAnalyticsReporter(PreferencesStore& preferences,
                                                       std::optional<std::string> appID, MainLoop& loop,
                                                       ClientFactory makeClient)
    : m_preferences(preferences), m_appID(std::move(appID)), m_loop(loop),
      m_makeClient(std::move(makeClient)) {}

std::optional<std::string> TelemetryAnalyticsReporter::configuredAppID(std::string_view built) {
    if (built.empty() || built.starts_with("PUT-YOUR")) return std::nullopt;
    return std::string(built);
}

void TelemetryAnalyticsReporter::start() {
    if (!m_appID) return;
    // The first delivery is the current value, so a switch that is on sets analytics up right here.
    m_enabledSubscription =
        m_preferences.usageAnalyticsEnabled.observe([this](const bool& enabled) { applyEnabled(enabled); });
}

void TelemetryAnalyticsReporter::applyEnabled(bool enabled) {
    if (!enabled) {
        m_heartbeat.cancel();
        return;
    }
    if (!m_client) m_client = m_makeClient(*m_appID);
    // Delivered before the switch stores the new value: turning it on later reads off here, so only a
    // launch with the switch on says "launched".
    track("App.launched");
    if (!m_heartbeat.active())
        m_heartbeat = m_loop.repeat(heartbeatInterval, [this] { track("App.heartbeat"); });
}

void TelemetryAnalyticsReporter::track(std::string_view signal) {
    if (m_client && m_preferences.usageAnalyticsEnabled()) m_client->signal(std::string(signal), {});
}

} // namespace tovrin
