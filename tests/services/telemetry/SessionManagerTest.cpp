#include "services/telemetry/SessionManager.h"

#include "services/telemetry/TelemetryTestSupport.h"
#include "support/ManualLoop.h"
#include "support/MemoryDefaultsStore.h"

#include <gtest/gtest.h>

namespace tovrin {
namespace {

class SessionManagerTest : public testing::Test {
protected:
    std::unique_ptr<SessionManager> run() {
        return std::make_unique<SessionManager>(
            store, loop.clock(), loop, test::inlineWorker,
            [this](const std::string& name, const SignalParameters& parameters) {
                sent.push_back(name + " " + parameters.begin()->second);
            });
    }
    long long now() {
        return std::chrono::duration_cast<std::chrono::seconds>(loop.clock().now().time_since_epoch())
            .count();
    }

    test::ScopedTimeZone zone{"UTC"};
    MemoryDefaultsStore store;
    test::ManualLoop loop;
    std::vector<std::string> sent;
};

TEST_F(SessionManagerTest, ANewInstallIsARunWithNoStoredSession) {
    const auto session = [&](double seconds) {
        auto stats = run();
        stats->startNewSession();
        loop.advance(seconds);
        stats->flush();
    };
    session(0.5); // too short to be stored: the next run is new again
    EXPECT_FALSE(store.object("recentSessions"));
    const auto started = now();
    const auto writesBefore = store.writeCount();
    session(150);
    EXPECT_EQ(*store.object("recentSessions"),
              nlohmann::json::parse(R"([{"st":)" + std::to_string(started) + R"(,"dn":150}])"));
    EXPECT_LE(store.writeCount() - writesBefore, 10U) << "the running duration is not written every second";
    session(3);
    EXPECT_EQ(sent, (std::vector<std::string>{"TelemetryDeck.Acquisition.newInstallDetected 2026-11-22",
                                              "TelemetryDeck.Acquisition.newInstallDetected 2026-11-22"}));
    EXPECT_EQ(store.object("recentSessions")->size(), 2U);
    EXPECT_EQ(store.object("firstSessionDate"), "2026-11-22");
}

TEST_F(SessionManagerTest, RetentionFactsAgeOutOldSessionsAndStillCountThem) {
    const long long day = 86400;
    store.set("recentSessions", nlohmann::json::array({{{"st", now() - 91 * day}, {"dn", 50}},
                                                       {{"st", now() - 3 * day}, {"dn", 10}},
                                                       {{"st", now() - 2 * day}, {"dn", 20}},
                                                       {{"st", now() - day}, {"dn", 45}}}));
    store.set("deletedSessionsCount", 2);
    store.set("distinctDaysUsed", nlohmann::json::array({"2026-08-01", "2026-10-23", "2026-11-21"}));
    const SignalParameters expected = {
        {"TelemetryDeck.Acquisition.firstSessionDate", "2026-11-22"},
        {"TelemetryDeck.Retention.averageSessionSeconds", "15"},
        {"TelemetryDeck.Retention.previousSessionSeconds", "20"},
        {"TelemetryDeck.Retention.totalSessionsCount", "6"},
        {"TelemetryDeck.Retention.distinctDaysUsed", "4"},
        {"TelemetryDeck.Retention.distinctDaysUsedLastMonth", "3"},
    };
    EXPECT_EQ(run()->parameters(), expected);
    // A second run the same day neither counts the aged session again nor adds a day.
    EXPECT_EQ(run()->parameters(), expected);
    loop.advance(day);
    EXPECT_EQ(run()->parameters().at("TelemetryDeck.Retention.distinctDaysUsed"), "5");
}

} // namespace
} // namespace tovrin
