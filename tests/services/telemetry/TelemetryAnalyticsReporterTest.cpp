#include "services/telemetry/TelemetryAnalyticsReporter.h"

#include "support/ManualLoop.h"
#include "support/MemoryDefaultsStore.h"
#include "support/RecordingTelemetryClient.h"

#include <gtest/gtest.h>

namespace tovrin {
namespace {

class TelemetryAnalyticsReporterTest : public testing::Test {
protected:
    TelemetryAnalyticsReporter reporter(std::optional<std::string> appID) {
        return TelemetryAnalyticsReporter(preferences, std::move(appID), loop, [this](const std::string& id) {
            builtFor.push_back(id);
            return std::make_unique<test::RecordingTelemetryClient>(signals);
        });
    }
    // The names sent so far; the application's own signals carry no parameters.
    std::vector<std::string> sent() const {
        std::vector<std::string> names;
        for (const auto& [name, parameters] : signals) {
            EXPECT_TRUE(parameters.empty()) << name;
            names.push_back(name);
        }
        return names;
    }

    MemoryDefaultsStore defaults;
    PreferencesStore preferences{defaults};
    test::ManualLoop loop;
    std::vector<std::string> builtFor;
    test::RecordingTelemetryClient::Sent signals;
};

TEST_F(TelemetryAnalyticsReporterTest, AnUnconfiguredBuildNeverBuildsAClient) {
    EXPECT_EQ(TelemetryAnalyticsReporter::configuredAppID(""), std::nullopt);
    EXPECT_EQ(TelemetryAnalyticsReporter::configuredAppID("PUT-YOUR-APP-ID"), std::nullopt);
    EXPECT_EQ(TelemetryAnalyticsReporter::configuredAppID("A1B2"), "A1B2");

    auto unconfigured = reporter(std::nullopt);
    unconfigured.start();
    preferences.usageAnalyticsEnabled.set(false);
    preferences.usageAnalyticsEnabled.set(true);
    unconfigured.track("Feedback.submitted");
    EXPECT_TRUE(builtFor.empty());
    EXPECT_EQ(loop.activeTimers(), 0U);
}

TEST_F(TelemetryAnalyticsReporterTest, SwitchOnAtLaunchSaysLaunchedAndBeatsEverySixHours) {
    auto analytics = reporter("APP");
    analytics.start();
    EXPECT_EQ(builtFor, std::vector<std::string>{"APP"});
    loop.advance(2 * 21600);
    analytics.track("Feedback.submitted");
    EXPECT_EQ(sent(), (std::vector<std::string>{"App.launched", "App.heartbeat", "App.heartbeat",
                                              "Feedback.submitted"}));

    // Off: the heartbeat stops at once and the gate drops what comes; on again beats without "launched".
    preferences.usageAnalyticsEnabled.set(false);
    EXPECT_FALSE(analytics.heartbeatRunning());
    analytics.track("Feedback.submitted");
    loop.advance(21600);
    preferences.usageAnalyticsEnabled.set(true);
    loop.advance(21600);
    EXPECT_EQ(sent().size(), 5U);
    EXPECT_EQ(sent().back(), "App.heartbeat");
    EXPECT_EQ(builtFor.size(), 1U) << "the client is built once";
}

TEST_F(TelemetryAnalyticsReporterTest, SwitchOffAtLaunchBuildsNothingUntilTurnedOn) {
    preferences.usageAnalyticsEnabled.set(false);
    auto analytics = reporter("APP");
    analytics.start();
    analytics.track("Feedback.submitted");
    EXPECT_FALSE(analytics.initialized());
    EXPECT_EQ(loop.activeTimers(), 0U);

    preferences.usageAnalyticsEnabled.set(true);
    EXPECT_TRUE(analytics.initialized());
    EXPECT_TRUE(signals.empty()) << "turning it on later is no launch";
    loop.advance(21600);
    EXPECT_EQ(sent(), std::vector<std::string>{"App.heartbeat"});
}

} // namespace
} // namespace tovrin
