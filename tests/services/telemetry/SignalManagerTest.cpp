#include "services/telemetry/SignalManager.h"

#include "services/telemetry/TelemetryTestSupport.h"
#include "support/FakeHttpClient.h"
#include "support/ManualLoop.h"
#include "support/TempDir.h"

#include <gtest/gtest.h>

namespace tovrin {
namespace {

SignalPostBody signalNamed(const std::string& type) {
    SignalPostBody body{};
    body.receivedAt = test::ManualLoop::defaultStart();
    body.type = type;
    return body;
}

class SignalManagerTest : public testing::Test {
protected:
    SignalManagerTest() {
        configuration.logHandler.write = [](LogLevel, const std::string&) {};
    }
    std::unique_ptr<SignalManager> manager(HttpClient& client) {
        return std::make_unique<SignalManager>(configuration, loop, client, test::inlineWorker, cacheFile);
    }
    static std::vector<std::string> typesIn(const HttpRequest& request) {
        std::vector<std::string> types;
        for (const auto& signal : nlohmann::json::parse(*request.body))
            types.push_back(signal["type"]);
        return types;
    }
    // Nothing goes out until `seconds` from now, and then one request does.
    void expectAttemptAfter(double seconds, const test::FakeHttpClient& client) {
        const auto before = client.requests().size();
        loop.advance(seconds - 0.01);
        EXPECT_EQ(client.requests().size(), before) << "sooner than " << seconds << " s";
        loop.advance(0.01);
        EXPECT_EQ(client.requests().size(), before + 1) << "not after " << seconds << " s";
    }

    TelemetryManagerConfiguration configuration{"APP", std::nullopt, "https://nom.example"};
    test::TempDir dir;
    std::filesystem::path cacheFile = dir.path() / "telemetrysignalcache";
    test::ManualLoop loop;
    test::FakeHttpClient http;
};

TEST_F(SignalManagerTest, BatchesOfAHundredTenSecondsApartFromTheNewestSignals) {
    configuration.cacheLimit = 101;
    auto signals = manager(http);
    for (int i = 0; i <= 101; ++i)
        signals->enqueue(signalNamed("s" + std::to_string(i)));
    EXPECT_EQ(signals->queuedCount(), 101U);
    signals->start();
    loop.drain();
    ASSERT_EQ(http.requests().size(), 1U);
    EXPECT_EQ(http.requests()[0].url, "https://nom.example/v2/");
    const auto first = typesIn(http.requests()[0]);
    EXPECT_EQ(first.size(), 100U);
    EXPECT_EQ(first.front(), "s1") << "the oldest went";
    http.respond(200, "ok");
    expectAttemptAfter(10, http);
    EXPECT_EQ(typesIn(http.requests()[1]), std::vector<std::string>{"s101"});
}

TEST(SignalURLTest, TheVersionedPathBelowTheBase) {
    EXPECT_EQ(SignalManager::signalURL("https://nom.example", std::nullopt), "https://nom.example/v2/");
    EXPECT_EQ(SignalManager::signalURL("https://nom.example/in/", "tovrin"),
              "https://nom.example/in/v2/namespace/tovrin/");
    EXPECT_EQ(SignalManager::signalURL("nom.example", std::nullopt), std::nullopt);
    EXPECT_EQ(SignalManager::signalURL("https://nom.example", "a/b"), std::nullopt);
}

TEST_F(SignalManagerTest, FailuresBackOffToFiveMinutesAndASuccessResets) {
    auto signals = manager(http);
    signals->enqueue(signalNamed("old"));
    signals->start();
    loop.drain();
    signals->enqueue(signalNamed("new")); // while the batch is on its way
    http.respond(500, "");
    expectAttemptAfter(20, http);
    EXPECT_EQ(typesIn(http.requests().back()), (std::vector<std::string>{"new", "old"}));
    for (double delay : {40, 80, 160, 300, 300}) {
        http.respond(503, "");
        expectAttemptAfter(delay, http);
    }
    http.respond(200, "");
    signals->enqueue(signalNamed("later"));
    expectAttemptAfter(10, http);
    EXPECT_EQ(typesIn(http.requests().back()), std::vector<std::string>{"later"});
}

TEST_F(SignalManagerTest, EachAnswerKeepsOrDropsTheBatch) {
    struct Row {
        HttpResult answer;
        bool kept;
    };
    std::vector<Row> rows = {
        {HttpResponse{204, ""}, false},
        {HttpResult::failure({TransportError::Kind::timeout, {}}), true},
        {HttpResponse{std::nullopt, "data"}, true},
        {HttpResponse{302, ""}, true},
        {HttpResponse{500, ""}, true},
        {HttpResponse{429, ""}, true},
    };
    for (int status : {400, 401, 403, 404, 413, 422, 501, 505})
        rows.push_back({HttpResponse{status, ""}, false});
    for (const auto& [answer, kept] : rows) {
        SCOPED_TRACE(answer ? std::to_string(answer.value().status.value_or(0)) : "transport error");
        test::FakeHttpClient client;
        auto signals = manager(client);
        signals->enqueue(signalNamed("first"));
        signals->start();
        loop.drain();
        signals->enqueue(signalNamed("next"));
        client.answer(answer);
        // A refused batch is gone for good but counts as a success: no back-off.
        expectAttemptAfter(kept ? 20 : 10, client);
        const std::vector<std::string> expected =
            kept ? std::vector<std::string>{"next", "first"} : std::vector<std::string>{"next"};
        EXPECT_EQ(typesIn(client.requests().back()), expected);
    }
}

TEST_F(SignalManagerTest, TheQueueOutlivesTheRunInAFileReadOnce) {
    auto withValue = signalNamed("a");
    withValue.floatValue = 2.5;
    withValue.receivedAt += std::chrono::milliseconds(1500);
    {
        auto signals = manager(http);
        signals->enqueue(withValue);
        signals->enqueue(signalNamed("b"));
        signals->backupCache();
        EXPECT_EQ(signals->queuedCount(), 0U);
    }
    ASSERT_TRUE(std::filesystem::exists(cacheFile));
    auto signals = manager(http);
    signals->start();
    loop.drain();
    EXPECT_FALSE(std::filesystem::exists(cacheFile));
    ASSERT_EQ(http.requests().size(), 1U);
    const auto sent = nlohmann::json::parse(*http.requests()[0].body);
    EXPECT_EQ(sent[0], nlohmann::json(wireJson(withValue)));
    EXPECT_EQ(sent[0]["receivedAt"], "2026-11-22T12:00:01+0000");
    EXPECT_EQ(sent[1]["type"], "b");

    for (const char* corrupt : {"{not json", R"({"type":"a"})", "[{\"type\":1}]"}) {
        dir.write("telemetrysignalcache", corrupt);
        auto reader = manager(http);
        reader->start();
        EXPECT_FALSE(std::filesystem::exists(cacheFile)) << corrupt;
        EXPECT_EQ(reader->queuedCount(), 0U) << corrupt;
    }
}

} // namespace
} // namespace tovrin
