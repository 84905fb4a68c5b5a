#include "services/telemetry/TelemetryManager.h"

#include "core/JsonFileDefaultsStore.h"
#include "services/telemetry/ReservedSignalNames.h"
#include "services/telemetry/TelemetryClientFactory.h"
#include "services/telemetry/TelemetryTestSupport.h"
#include "support/FakeHttpClient.h"
#include "support/ManualLoop.h"
#include "support/TempDir.h"

#include <gtest/gtest.h>

namespace tovrin {
namespace {

using json = nlohmann::ordered_json;

class TelemetryManagerTest : public testing::Test {
protected:
    std::unique_ptr<TelemetryManager> manager(TelemetryManagerConfiguration configuration,
                                              const std::string& storeName = "store.json") {
        configuration.logHandler.write = [this](LogLevel level, const std::string& line) {
            if (level == LogLevel::error) errors.push_back(line);
        };
        return std::make_unique<TelemetryManager>(
            std::move(configuration),
            TelemetryServices{
                .loop = loop,
                .http = http,
                .clock = loop.clock(),
                .store = std::make_unique<JsonFileDefaultsStore>(dir.path() / storeName),
                .displayFacts = [] { return DisplayFacts{1920, 1080, 1.25, true, false, false, false}; },
                .runOnWorker = test::inlineWorker,
                .systemFactFiles = {{dir.write("os-release", "ID=ubuntu\nVERSION_ID=\"24.04.1\"\n")},
                                    dir.write("product_name", "ThinkPad X1\n")},
                .cacheFileURL = dir.path() / "cache"});
    }
    // The batch that goes out at the next send interval.
    json nextBatch() {
        loop.advance(10);
        return http.requests().empty() ? json() : json::parse(*http.requests().back().body);
    }

    test::ScopedTimeZone zone{"UTC"};
    test::TempDir dir;
    test::ManualLoop loop;
    test::FakeHttpClient http;
    std::vector<std::string> errors;
};

TEST_F(TelemetryManagerTest, OneSignalOnTheWire) {
    TelemetryManagerConfiguration configuration("APP", "c", "https://nom.example/");
    configuration.defaultUser = "ab";
    configuration.sessionID = "e621e1f8-c36c-495a-93fc-0c247a3e6e5f";
    auto client = manager(configuration);
    client->signal("App.launched", {{"source", "menu"}}, 1.5, std::nullopt);
    const auto batch = nextBatch();

    const auto& request = http.requests().at(0);
    EXPECT_EQ(request.method, "POST");
    EXPECT_EQ(request.url, "https://nom.example/v2/");
    EXPECT_EQ(request.headers, (decltype(request.headers){{"Content-Type", "application/json"}}));
    EXPECT_EQ(request.timeout.count(), 60);

    // The first session starts half a second in; the signal taken before carries the first id.
    ASSERT_EQ(batch.size(), 3U);
    EXPECT_EQ(batch[1]["type"], "TelemetryDeck.Acquisition.newInstallDetected");
    EXPECT_EQ(batch[2]["type"], "TelemetryDeck.Session.started");
    EXPECT_EQ(batch[2]["sessionID"], client->sessionID());
    EXPECT_FALSE(batch[2].contains("floatValue"));
    EXPECT_TRUE(errors.empty()) << errors.front();

    const auto& signal = batch[0];
    std::vector<std::string> keys;
    for (const auto& item : signal.items())
        keys.push_back(item.key());
    EXPECT_EQ(keys, (std::vector<std::string>{"receivedAt", "appID", "clientUser", "sessionID", "type",
                                              "floatValue", "payload", "isTestMode"}));
    EXPECT_EQ(signal["receivedAt"], "2026-11-22T12:00:00+0000");
    EXPECT_EQ(signal["clientUser"], "ba7816bf8f01cfea414140de5dae2223b00361a396177a9cb410ff61f20015ad");
    EXPECT_EQ(signal["sessionID"], "E621E1F8-C36C-495A-93FC-0C247A3E6E5F");
    EXPECT_EQ(signal["floatValue"], 1.5);
    EXPECT_EQ(signal["isTestMode"], "false");

    const auto& payload = signal["payload"];
    const std::map<std::string, std::string> expected = {
        {"source", "menu"},
        {"platform", "Linux"},
        {"TelemetryDeck.Device.systemVersion", "Linux 24.04.1"},
        {"majorMinorSystemVersion", "Linux 24.04"},
        {"modelName", "ThinkPad X1"},
        {"TelemetryDeck.Device.screenResolutionWidth", "1920.0"},
        {"TelemetryDeck.Device.screenScaleFactor", "1.25"},
        {"TelemetryDeck.UserPreference.colorScheme", "Dark"},
        {"TelemetryDeck.Device.timeZone", "UTC+0"},
        {"TelemetryDeck.Calendar.dayOfWeek", "7"},
        {"TelemetryDeck.Calendar.isWeekend", "true"},
        {"TelemetryDeck.Retention.totalSessionsCount", "0"},
        {"TelemetryDeck.Retention.averageSessionSeconds", "-1"},
    };
    for (const auto& [key, value] : expected)
        EXPECT_EQ(payload.value(key, "(missing)"), value) << key;
    // Every fact of the table, and "source"; the previous session's length is left out without one.
    EXPECT_EQ(payload.size(), 64U) << payload.dump(1);
    EXPECT_FALSE(payload.contains("TelemetryDeck.Retention.previousSessionSeconds"));
}

TEST_F(TelemetryManagerTest, TheUserIdIsMadeOnceAndKeptInTheClientsOwnStore) {
    const auto userOf = [&](const std::string& storeName) {
        auto client = manager(TelemetryManagerConfiguration("APP"), storeName);
        client->signal("App.launched", {});
        return nextBatch()[0]["clientUser"].get<std::string>();
    };
    const auto first = userOf("a.json");
    EXPECT_EQ(first.find_first_not_of("0123456789abcdef"), std::string::npos);
    EXPECT_EQ(first.size(), 64U);
    EXPECT_EQ(userOf("a.json"), first);
    EXPECT_NE(userOf("b.json"), first);
}

TEST(TelemetryClientFactoryTest, TheClientsFilesLiveInTheUsersStateAndCacheFolders) {
    const test::ScopedEnv state("XDG_STATE_HOME", "/s"), cache("XDG_CACHE_HOME", "/c");
    EXPECT_EQ(TelemetryClientFactory::storeFile("A1B2"), "/s/tovrin/com.telemetrydeck.df3443955830.json");
    EXPECT_EQ(SignalCache::defaultFile(), "/c/tovrin/telemetrysignalcache");
}

TEST_F(TelemetryManagerTest, PrefixesAndDefaultsApplyAndAReservedNameIsLoggedButSent) {
    TelemetryManagerConfiguration configuration("APP");
    configuration.defaultSignalPrefix = "TelemetryDeck.";
    configuration.defaultParameterPrefix = "p.";
    configuration.defaultParameters = [] { return SignalParameters{{"a", "default"}, {"b", "default"}}; };
    configuration.sendNewSessionBeganSignal = false;
    configuration.sessionStatsEnabled = false;
    auto client = manager(configuration);
    client->signal("Opened", {{"a", "given"}});
    const auto signal = nextBatch().at(0);

    EXPECT_EQ(signal["type"], "TelemetryDeck.Opened");
    EXPECT_EQ(signal["payload"]["p.a"], "given");
    EXPECT_EQ(signal["payload"]["p.b"], "default");
    EXPECT_FALSE(signal["payload"].contains("TelemetryDeck.Retention.totalSessionsCount"));
    EXPECT_EQ(errors, std::vector<std::string>{*ReservedSignalNames::nameWarning("TelemetryDeck.Opened")});
}

TEST(ReservedSignalNamesTest, NamesAndKeysTheServiceKeeps) {
    // The warnings name what is reserved; the match ignores case.
    const auto says = [](const std::optional<std::string>& warning, const std::string& words) {
        return warning && warning->find(words) != std::string::npos;
    };
    EXPECT_TRUE(says(ReservedSignalNames::nameWarning("SessionID"), "signal with reserved name 'SessionID'"));
    EXPECT_TRUE(
        says(ReservedSignalNames::nameWarning("telemetryDECK.x"), "reserved prefix 'TelemetryDeck.'"));
    EXPECT_TRUE(says(ReservedSignalNames::keyWarning("telemetryClientVersion"),
                     "parameter with reserved key 'telemetryClientVersion'"));
    EXPECT_TRUE(
        says(ReservedSignalNames::keyWarning("TelemetryDeck.type"), "reserved key prefix 'TelemetryDeck.'"));
    for (const char* fine : {"App.launched", "App.heartbeat", "Feedback.submitted", "types", "source"}) {
        EXPECT_EQ(ReservedSignalNames::nameWarning(fine), std::nullopt) << fine;
        EXPECT_EQ(ReservedSignalNames::keyWarning(fine), std::nullopt) << fine;
    }
}

} // namespace
} // namespace tovrin
