#include "services/UpdaterManager.h"

#include "support/CannedAppcast.h"
#include "support/FakeHttpClient.h"
#include "support/MemoryDefaultsStore.h"

#include <gtest/gtest.h>

namespace tovrin {
namespace {

using Phase = UpdateStatus::Phase;

constexpr const char* feedAddress = "https://tovrin.app/appcast.xml";
constexpr const char* realKey = "pfIShU4dEXqPd5ObYNfDBiQWcXozk7estwzTnF9BamQ=";

AppcastItem release(std::string version, std::string shortVersion) {
    return {.version = std::move(version),
            .shortVersion = std::move(shortVersion),
            .notes = "<p>Faster.</p>",
            .url = "https://tovrin.app/tovrin.tar.gz",
            .length = 100,
            .signature = "c2lnbmF0dXJl"};
}

struct UpdaterFixture : ::testing::Test {
    test::FakeHttpClient http;
    std::shared_ptr<test::CannedAppcast> feed = std::make_shared<test::CannedAppcast>();
    MemoryDefaultsStore defaults;
    std::vector<std::string> logged;
    int relaunches = 0;

    std::unique_ptr<UpdaterManager> make(std::string address, std::string key,
                                         std::optional<std::filesystem::path> installation = std::nullopt) {
        return std::make_unique<UpdaterManager>(
            UpdateConfiguration{std::move(address), std::move(key), "1.4.2", "57"},
            UpdaterManager::Ports{http, feed, defaults}, std::move(installation), [this] { ++relaunches; },
            [this](const std::string& line) { logged.push_back(line); });
    }
};

TEST(UpdaterManagerTest, OnlyARealKeyCountsAsConfigured) {
    EXPECT_FALSE(UpdaterManager::isConfigured(""));
    EXPECT_FALSE(UpdaterManager::isConfigured("PUT-YOUR-KEY-HERE"));
    EXPECT_FALSE(UpdaterManager::isConfigured("PUT-YOUR"));
    EXPECT_TRUE(UpdaterManager::isConfigured(realKey));
    EXPECT_TRUE(UpdaterManager::isConfigured("put-your-key")) << "the placeholder is matched exactly";
    EXPECT_TRUE(UpdaterManager::isConfigured(" PUT-YOUR-KEY")) << "only a leading placeholder counts";
}

TEST_F(UpdaterFixture, WithoutAKeyOrAFeedItStaysOffSilentlyAndUnusableSettingsLogOneLine) {
    const std::vector<std::tuple<std::string, std::string, bool>> rows = {
        {feedAddress, "PUT-YOUR-KEY-HERE", false},
        {"", realKey, false},
        {feedAddress, "", false},
        {"file:///etc/passwd", realKey, true},
        {feedAddress, "not the base64 of a key", true}};
    for (const auto& [address, key, logs] : rows) {
        logged.clear();
        const auto updater = make(address, key);
        EXPECT_FALSE(updater->canCheckForUpdates()) << address << " " << key;
        updater->checkForUpdates();
        ASSERT_EQ(logged.size(), logs ? 1u : 0u) << address << " " << key;
        if (logs) {
            EXPECT_TRUE(logged.front().starts_with("Tovrin: updater not started — ")) << logged.front();
        }
    }
    EXPECT_TRUE(http.requests().empty());
}

TEST_F(UpdaterFixture, ACheckOffersTheNewestReleaseAndASkippedOneIsNotOfferedAgain) {
    feed->items = {release("58", "1.5.0"), release("60", "2.0.0")};
    const auto updater = make(feedAddress, realKey); // no installation known: nothing installs here
    updater->checkForUpdates();
    EXPECT_EQ(updater->status().phase, Phase::checking);
    EXPECT_FALSE(updater->canCheckForUpdates()) << "one check at a time";
    ASSERT_EQ(http.requests().size(), 1u);
    EXPECT_EQ(http.requests()[0].url, feedAddress);

    http.respond(200, "feed");
    const UpdateStatus offer = updater->status();
    EXPECT_EQ(offer.phase, Phase::available);
    ASSERT_TRUE(offer.release);
    EXPECT_EQ(offer.release->version, "60");
    EXPECT_EQ(offer.headline, "Tovrin 2.0.0 is available.");
    EXPECT_FALSE(offer.installable);
    EXPECT_EQ(offer.detail, packageManagerAdvice);
    EXPECT_TRUE(updater->canCheckForUpdates());
    updater->installUpdate();
    EXPECT_EQ(http.requests().size(), 1u) << "nothing is downloaded where a package manager rules";

    updater->skipOfferedVersion();
    EXPECT_EQ(updater->status().phase, Phase::idle);
    EXPECT_EQ(defaults.object("skippedUpdateVersion"), nlohmann::json("60"));
    updater->checkForUpdates();
    http.respond(200, "feed");
    EXPECT_EQ(updater->status().phase, Phase::upToDate);
    EXPECT_EQ(updater->status().headline, "Tovrin is up to date.");
    EXPECT_EQ(updater->status().detail, "Version 1.4.2 (57) is the newest version.");
    EXPECT_EQ(relaunches, 0);
}

TEST_F(UpdaterFixture, AFailedCheckSaysWhyAndTheButtonComesBack) {
    const auto updater = make(feedAddress, realKey);
    const std::vector<std::pair<std::function<void()>, std::string>> rows = {
        {[&] { http.fail(TransportError::Kind::timeout); },
         "Could not reach the update feed: The request timed out."},
        {[&] { http.respond(404, "feed"); }, "The update feed answered with HTTP status 404."},
        {[&] { http.respond(200, "<html>"); }, "The update feed could not be read: line 1, column 1: no"},
    };
    for (const auto& [answer, detail] : rows) {
        updater->checkForUpdates();
        answer();
        EXPECT_EQ(updater->status().phase, Phase::failed);
        EXPECT_EQ(updater->status().headline, "Could not check for updates.");
        EXPECT_EQ(updater->status().detail, detail);
        EXPECT_TRUE(updater->canCheckForUpdates());
    }
}

} // namespace
} // namespace tovrin
