#include "platform/qt/QtHttpClient.h"
#include "platform/qt/QtMainLoop.h"
#include "services/telemetry/TelemetryManager.h"
#include "support/LocalHttpServer.h"
#include "support/MemoryDefaultsStore.h"
#include "support/QtEventLoopTest.h"
#include "support/TempDir.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <gtest/gtest.h>

namespace tovrin {
namespace {

using namespace std::chrono_literals;

class TelemetryHttpTest : public test::QtEventLoopTest {
protected:
    // The whole client on a worker thread of its own, over the real HTTP client.
    std::unique_ptr<TelemetryManager> manager(Seconds transmitInterval) {
        TelemetryManagerConfiguration configuration("APP", std::nullopt, server.base());
        configuration.transmitInterval = transmitInterval;
        configuration.sendNewSessionBeganSignal = false;
        configuration.sessionStatsEnabled = false;
        return std::make_unique<TelemetryManager>(
            std::move(configuration), TelemetryServices{.loop = loop,
                                                        .http = http,
                                                        .clock = clock,
                                                        .store = std::make_unique<MemoryDefaultsStore>(),
                                                        .cacheFileURL = dir.path() / "cache"});
    }

    test::LocalHttpServer server;
    test::TempDir dir;
    QtMainLoop loop;
    QtHttpClient http;
    SystemClock clock;
};

// A signal still queued at the end of one run is written by terminate() and sent by the next run.
TEST_F(TelemetryHttpTest, AQueuedSignalOutlivesTheRunAndArrivesAsJsonAtTheVersionedPath) {
    server.route("/v2/", test::httpReply(200, "application/json", R"({"status":"ok"})"));
    {
        auto first = manager(Seconds(600));
        first->signal("App.launched", {{"source", "test"}});
        pumpFor(200ms);
        first->terminate();
    }
    EXPECT_TRUE(server.received().empty());
    ASSERT_TRUE(std::filesystem::exists(dir.path() / "cache"));

    auto next = manager(Seconds(0.1));
    ASSERT_TRUE(pumpUntil([&] { return !server.received().empty(); }));
    pumpFor(300ms);
    ASSERT_EQ(server.received().size(), 1U) << "accepted, so sent once";
    const auto& request = server.received()[0];
    EXPECT_EQ(request.method, "POST");
    EXPECT_EQ(request.headers.at("content-type"), "application/json");
    const auto batch = QJsonDocument::fromJson(request.body).array();
    ASSERT_EQ(batch.size(), 1);
    const auto signal = batch[0].toObject();
    EXPECT_EQ(signal["type"].toString(), "App.launched");
    EXPECT_EQ(signal["payload"].toObject()["source"].toString(), "test");
    EXPECT_EQ(signal["payload"].toObject()["platform"].toString(), "Linux");
}

} // namespace
} // namespace tovrin
