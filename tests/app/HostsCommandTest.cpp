#include "app/RunTovrin.h"
#include "support/TempDir.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

namespace tovrin {
namespace {

// The list as the user keeps it: kept in defaults.json, each host once, and nothing ssh would
// take for an option or split in two.
TEST(HostsCommand, AddsListsAndRemovesHostsRefusingWhatSshCouldMisread) {
    test::TempDir home;
    const auto status = home.path() / "status";
    const auto run = [&](const std::string& args) {
        return test::runShell(args + "; echo \"=$?\"", home, status).out;
    };
    EXPECT_EQ(run("\"$TOVRIN\" hosts add dev@build.lan && \"$TOVRIN\" hosts add box"), "=0\n");
    EXPECT_EQ(run("\"$TOVRIN\" hosts"), "dev@build.lan\nbox\n=0\n");
    const auto stored = nlohmann::json::parse(test::readText(home.path() / ".config/tovrin/defaults.json"));
    EXPECT_EQ(stored["remoteHosts"], nlohmann::json::array({"dev@build.lan", "box"}));

    for (const std::string refused : {"box", "-oProxyCommand=x", "'two words'", "''"})
        EXPECT_EQ(run("\"$TOVRIN\" hosts add " + refused), "=1\n") << refused;
    EXPECT_EQ(run("\"$TOVRIN\" hosts remove box && \"$TOVRIN\" hosts list"), "dev@build.lan\n=0\n");
    EXPECT_EQ(run("\"$TOVRIN\" hosts remove box"), "=1\n");
    EXPECT_EQ(run("\"$TOVRIN\" hosts add"), "=2\n");
}

} // namespace
} // namespace tovrin
