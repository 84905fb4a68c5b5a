#include "services/UpdaterManager.h"

#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace tovrin {
namespace {

TEST(UpdaterManagerTest, OnlyARealKeyCountsAsConfigured) {
    EXPECT_FALSE(UpdaterManager::isConfigured(""));
    EXPECT_FALSE(UpdaterManager::isConfigured("PUT-YOUR-KEY-HERE"));
    EXPECT_FALSE(UpdaterManager::isConfigured("PUT-YOUR"));
    EXPECT_TRUE(UpdaterManager::isConfigured("pfIShU4dEXqPd5ObYNfDBiQWcXozk7estwzTnF9BamQ="));
    EXPECT_TRUE(UpdaterManager::isConfigured("put-your-key")) << "the placeholder is matched exactly";
    EXPECT_TRUE(UpdaterManager::isConfigured(" PUT-YOUR-KEY")) << "only a leading placeholder counts";
}

struct Recorder {
    std::vector<std::string> opened;
    std::vector<std::string> logged;
    UpdaterManager::OpenAddress open() {
        return [this](const std::string& address) { opened.push_back(address); };
    }
    UpdaterManager::LogLine log() {
        return [this](const std::string& line) { logged.push_back(line); };
    }
};

TEST(UpdaterManagerTest, WithoutAKeyOrAddressNothingCanBeCheckedAndNothingIsSaid) {
    Recorder record;
    UpdaterManager placeholder("https://tovrin.app/download", "PUT-YOUR-KEY-HERE", record.open(),
                               record.log());
    UpdaterManager noAddress("", "key", record.open(), record.log());
    EXPECT_FALSE(placeholder.canCheckForUpdates());
    EXPECT_FALSE(noAddress.canCheckForUpdates());
    placeholder.checkForUpdates();
    noAddress.checkForUpdates();
    EXPECT_TRUE(record.opened.empty());
    EXPECT_TRUE(record.logged.empty());
}

TEST(UpdaterManagerTest, AConfiguredUpdaterCanCheckAndOpensTheDownloadPage) {
    Recorder record;
    UpdaterManager updater("https://tovrin.app/download", "key", record.open(), record.log());
    bool seen = false;
    const Subscription watching = updater.canCheckForUpdates.observe([&](bool value) { seen = value; });
    EXPECT_TRUE(seen) << "observers get the settled value at once";
    updater.checkForUpdates();
    EXPECT_EQ(record.opened, std::vector<std::string>{"https://tovrin.app/download"});
}

TEST(UpdaterManagerTest, AnAddressThatIsNoWebAddressFailsToStartWithOneLogLine) {
    Recorder record;
    UpdaterManager updater("file:///etc/passwd", "key", record.open(), record.log());
    EXPECT_FALSE(updater.canCheckForUpdates());
    ASSERT_EQ(record.logged.size(), 1u);
    EXPECT_TRUE(record.logged.front().starts_with("Tovrin: updater not started — "));
    updater.checkForUpdates();
    EXPECT_TRUE(record.opened.empty());
}

} // namespace
} // namespace tovrin
