#include "app/RunTovrin.h"
#include "support/SamplePayload.h"
#include "support/TempDir.h"

#include <filesystem>
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

namespace tovrin {
namespace {

namespace fs = std::filesystem;
using nlohmann::json;

TEST(HooksCommand, TwentyInstallsAtOnceAllSucceedAndKeepTheOriginal) {
    test::TempDir home;
    const std::string mine = R"({"model": "m", "hooks": {"Stop": [{"hooks": [{"command": "say"}]}]}})";
    const auto settings = home.write(".claude/settings.json", mine);
    const auto result = test::runShell(
        R"(pids=; for i in $(seq 20); do "$TOVRIN" hooks install claude-code >/dev/null & pids="$pids $!"; done
           failed=0; for p in $pids; do wait $p || failed=$((failed + 1)); done; echo $failed)",
        home, home.path() / "status");
    EXPECT_EQ(result.out, "0\n");

    const auto installed = json::parse(test::readText(settings));
    EXPECT_EQ(installed["model"], "m");
    const auto& stop = installed["hooks"]["Stop"];
    ASSERT_EQ(stop.size(), 2u) << "the user's group, then ours once: " << stop.dump();
    EXPECT_EQ(stop[0]["hooks"][0]["command"], "say");
    EXPECT_EQ(test::readText(settings.string() + ".tovrin.orig"), mine);
    for (const auto& name : test::entriesOf(home.path() / ".tovrin"))
        EXPECT_EQ(name.find(".tmp."), std::string::npos) << name;
}

TEST(HooksCommand, SetUpNamesTheEditorSettingsItCouldNotChange) {
    test::TempDir home;
    const auto settings = home.write(".config/Code/User/settings.json", "{ // mine\n}");
    const auto result = test::runTovrin("hooks setup", home, home.path() / "status");
    EXPECT_NE(result.out.find("! " + settings.string() +
                              " could not be edited automatically (settings.json is "
                              "not plain JSON (it may use comments). Tovrin left it "
                              "untouched.)."),
              std::string::npos)
        << result.out;
    EXPECT_EQ(test::readText(settings), "{ // mine\n}");
}

} // namespace
} // namespace tovrin
