#pragma once

#include "core/MainLoop.h"
#include "core/PreferencesStore.h"
#include "core/Signal.h"
#include "services/telemetry/AnalyticsReporting.h"
#include "services/telemetry/TelemetrySignaling.h"

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace tovrin {

// The application's own signals over the telemetry client, under the user's switch. A build without
// an app id never builds a client, whatever the switch says. Main loop only.
class TelemetryAnalyticsReporter final : public AnalyticsReporting {
public:
    // Builds the one client for an app id; called at most once, when analytics first go on.
    using ClientFactory = std::function<std::unique_ptr<TelemetrySignaling>(const std::string& appID)>;

    static constexpr Seconds heartbeatInterval{21600};

    TelemetryAnalyticsReporter(PreferencesStore& preferences, std::optional<std::string> appID,
                               MainLoop& loop, ClientFactory makeClient);

    // The app id a build carries, or none when it is empty or still the placeholder.
    static std::optional<std::string> configuredAppID(std::string_view built);

    void start() override;
    void track(std::string_view signal) override;

    bool initialized() const { return m_client != nullptr; }
    bool heartbeatRunning() const { return m_heartbeat.active(); }

private:
    void applyEnabled(bool enabled);

    PreferencesStore& m_preferences;
    std::optional<std::string> m_appID;
    MainLoop& m_loop;
    ClientFactory m_makeClient;
    std::unique_ptr<TelemetrySignaling> m_client; // once built, kept: it can't be taken back
    TimerHandle m_heartbeat;
    Subscription m_enabledSubscription;
};

} // namespace tovrin
