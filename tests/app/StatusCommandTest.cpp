#include "app/RunTovrin.h"
#include "core/Iso8601.h"
#include "support/SampleSessions.h"
#include "support/TempDir.h"

#include <filesystem>
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>
#include <unistd.h>

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

TEST_F(StatusCommandTest, JsonListsTheClassifiedSessionsNewestFirstWithTheirIds) {
    auto waiting = test::statusFile("claude-code", "w1", SessionState::waiting, addSeconds(now, -10));
    waiting["reason"] = "Claude needs your permission to use Bash";
    waiting["locator"] = {{"tmuxPane", "%3"}, {"app", nullptr}};
    writeSession("w1.json", waiting);
    writeSession("k1.json", test::statusFile("codex-cli", "k1", SessionState::working, addSeconds(now, -5)));
    // Its file says working, but it has been silent for two minutes: idle by the time it is listed.
    writeSession("s1.json",
                 test::statusFile("copilot-cli", "s1", SessionState::working, addSeconds(now, -120)));
    // Past the TTL with no pid: gone.
    writeSession("old.json",
                 test::statusFile("cursor-cli", "old", SessionState::idle, addSeconds(now, -4000)));
    // Its process is gone: gone, however fresh.
    auto dead = test::statusFile("cursor-ide", "dead", SessionState::waiting, now);
    dead["pid"] = 2147483647;
    writeSession("dead.json", dead);

    const auto result = runTovrin("status --json", home, statusDir);
    ASSERT_EQ(result.exitCode, 0);
    const auto list = nlohmann::json::parse(result.out);
    ASSERT_EQ(list.size(), 3u) << result.out;

    EXPECT_EQ(list[0]["id"], "codex-cli__k1");
    EXPECT_EQ(list[0]["state"], "working");
    EXPECT_EQ(list[1]["id"], "claude-code__w1");
    EXPECT_EQ(list[1]["state"], "waiting");
    EXPECT_EQ(list[1]["reason"], "Claude needs your permission to use Bash");
    EXPECT_EQ(list[1]["locator"], (nlohmann::json{{"tmuxPane", "%3"}}));
    EXPECT_EQ(list[1]["updatedAt"], formatIso8601(addSeconds(now, -10)));
    EXPECT_EQ(list[2]["id"], "copilot-cli__s1");
    EXPECT_EQ(list[2]["state"], "idle");
    EXPECT_FALSE(list[2].contains("pid"));
    EXPECT_FALSE(list[2].contains("locator"));
}

TEST_F(StatusCommandTest, TextGroupsSessionsUnderTheirHeadings) {
    auto waiting = test::statusFile("claude-code", "w1", SessionState::waiting, addSeconds(now, -42));
    waiting["title"] = "Fix the flaky test";
    waiting["root"] = "/home/dev/forge";
    waiting["reason"] = "Needs approval";
    writeSession("w1.json", waiting);
    writeSession("k1.json", test::statusFile("codex-cli", "k1", SessionState::working, now));

    const auto result = runTovrin("status", home, statusDir);
    ASSERT_EQ(result.exitCode, 0);
    const auto& out = result.out;
    const auto waitingAt = out.find("CALLING FOR AID (1)");
    const auto workingAt = out.find("AT WORK (1)");
    ASSERT_NE(waitingAt, std::string::npos) << out;
    ASSERT_NE(workingAt, std::string::npos) << out;
    EXPECT_LT(waitingAt, workingAt);
    EXPECT_EQ(out.find("RESTING"), std::string::npos);
    EXPECT_NE(
        out.find("Fix the flaky test\n    Claude Code \u00B7 Needs approval \u00B7 /home/dev/forge \u00B7 4"),
        std::string::npos)
        << out;
}

TEST_F(StatusCommandTest, AMissingFolderGivesAnEmptyListAndNoMessage) {
    test::TempDir other;
    const auto json = runTovrin("status --json", other, other.path() / "missing");
    EXPECT_EQ(json.exitCode, 0);
    EXPECT_EQ(nlohmann::json::parse(json.out), nlohmann::json::array());
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
