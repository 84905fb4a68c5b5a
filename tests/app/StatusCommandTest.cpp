#include "app/RunTovrin.h"
#include "support/SampleSessions.h"
#include "support/TempDir.h"

#include <filesystem>
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

namespace tovrin {
namespace {

using test::runTovrin;

class StatusCommandTest : public ::testing::Test {
protected:
    void SetUp() override {
        std::filesystem::create_directories(statusDir);
        // The malformed samples sit beside the good files and must simply be left out.
        for (const auto& entry :
             std::filesystem::directory_iterator(TOVRIN_TEST_DATA_DIR "/status-samples")) {
            std::filesystem::copy_file(entry.path(), statusDir / entry.path().filename());
        }
    }

    void writeSession(const std::string& name, nlohmann::ordered_json file) {
        home.write("status/" + name, file.dump());
    }

    test::TempDir home;
    std::filesystem::path statusDir = home.path() / "status";
    TimePoint now = std::chrono::system_clock::now();
};

// The command's own part: it reads the folder once and prints what it found. Classification, order
// and both formats are tested on the session store and the report.
TEST_F(StatusCommandTest, PrintsTheFoldersSessionsAsJsonOrTextAndNothingForAMissingFolder) {
    writeSession("w1.json",
                 test::statusFile("claude-code", "w1", SessionState::waiting, addSeconds(now, -10)));
    writeSession("k1.json", test::statusFile("codex-cli", "k1", SessionState::working, addSeconds(now, -5)));

    const auto json = runTovrin("status --json", home, statusDir);
    ASSERT_EQ(json.exitCode, 0);
    const auto list = nlohmann::json::parse(json.out);
    ASSERT_EQ(list.size(), 2u) << json.out;
    EXPECT_EQ(list[0]["id"], "codex-cli__k1");
    EXPECT_EQ(list[1]["id"], "claude-code__w1");
    const auto text = runTovrin("status", home, statusDir);
    EXPECT_EQ(text.exitCode, 0);
    EXPECT_LT(text.out.find("CALLING FOR AID (1)"), text.out.find("AT WORK (1)")) << text.out;
    EXPECT_NE(text.out.find("AT WORK (1)"), std::string::npos) << text.out;

    test::TempDir other;
    const auto empty = runTovrin("status --json", other, other.path() / "missing");
    EXPECT_EQ(empty.exitCode, 0);
    EXPECT_EQ(nlohmann::json::parse(empty.out), nlohmann::json::array());
    EXPECT_EQ(runTovrin("status", other, other.path() / "missing").out, "No agents are stirring.\n");
}

TEST_F(StatusCommandTest, AnUnknownOptionIsRefused) {
    EXPECT_EQ(runTovrin("status --frobnicate", home, statusDir).exitCode, 2);
}

TEST_F(StatusCommandTest, WatchPrintsALineWhenASessionStartsWaiting) {
    auto waiting = test::statusFile("codex-cli", "k1", SessionState::waiting, now);
    waiting["title"] = "Refactor the cache";
    waiting["root"] = "/home/dev/forge";
    home.write("staged/k1.json", waiting.dump());
    writeSession("idle.json", test::statusFile("claude-code", "i1", SessionState::idle, now));

    // The file arrives by an atomic rename a second after the watcher started.
    const auto staged = (home.path() / "staged" / "k1.json").string();
    const auto result = runTovrin("watch & sleep 1; mv '" + staged + "' '" +
                                      (statusDir / "k1.json").string() + "'; sleep 1; kill -TERM $!; wait",
                                  home, statusDir);
    EXPECT_NE(result.out.find("Codex is waiting \u00B7 Refactor the cache \u00B7 /home/dev/forge\n"),
              std::string::npos)
        << result.out;
    EXPECT_EQ(result.out.find("Claude Code is waiting"), std::string::npos) << result.out;
}

} // namespace
} // namespace tovrin
