#include "services/telemetry/TelemetryAnalyticsReporter.h"

#include "support/ManualLoop.h"
#include "support/MemoryDefaultsStore.h"

#include <gtest/gtest.h>
#include <memory>
#include <string>
#include <vector>

namespace tovrin {
namespace {

// Logs every signal, and every client built, into the fixture's lists.
class RecordingClient final : public TelemetrySignaling {
public:
    explicit RecordingClient(std::vector<std::string>& sent) : m_sent(sent) {}
    void signal(const std::string& name, const SignalParameters& parameters) override {
        EXPECT_TRUE(parameters.empty());
        m_sent.push_back(name);
    }

private:
    std::vector<std::string>& m_sent;
};

class TelemetryAnalyticsReporterTest : public testing::Test {
protected:
    TelemetryAnalyticsReporter reporter(std::optional<std::string> appID) {
        return TelemetryAnalyticsReporter(preferences, std::move(appID), loop, [this](const std::string& id) {
            builtFor.push_back(id);
            return std::make_unique<RecordingClient>(sent);
        });
    }

    MemoryDefaultsStore defaults;
    PreferencesStore preferences{defaults};
    test::ManualLoop loop;
    std::vector<std::string> builtFor, sent;
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
    EXPECT_EQ(sent, (std::vector<std::string>{"App.launched", "App.heartbeat", "App.heartbeat",
                                              "Feedback.submitted"}));

    // Off: the heartbeat stops at once and the gate drops what comes; on again beats without "launched".
    preferences.usageAnalyticsEnabled.set(false);
    EXPECT_FALSE(analytics.heartbeatRunning());
    analytics.track("Feedback.submitted");
    loop.advance(21600);
    preferences.usageAnalyticsEnabled.set(true);
    loop.advance(21600);
    EXPECT_EQ(sent.size(), 5U);
    EXPECT_EQ(sent.back(), "App.heartbeat");
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
    EXPECT_TRUE(sent.empty()) << "turning it on later is no launch";
    loop.advance(21600);
    EXPECT_EQ(sent, std::vector<std::string>{"App.heartbeat"});
}

} // namespace
} // namespace tovrin
