#include "app/RunTovrin.h"
#include "support/LocalSshd.h"
#include "support/SampleSessions.h"
#include "support/TempDir.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>
#include <unistd.h>

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

// A host over a real sshd on this machine: its sessions join the list under its name, and when it
// goes away the list says so instead of waiting on it.
TEST(HostsCommand, StatusListsAHostsSessionsAndNamesAHostThatIsGone) {
    if (!test::LocalSshd::available()) GTEST_SKIP() << "sshd or ssh-keygen is not installed";
    test::TempDir home, remote;
    auto sshd = std::make_unique<test::LocalSshd>(remote.path().string());
    // ssh reads the user's configuration from the password database's home, not $HOME: a wrapper
    // gives it the test host's.
    const auto wrapper =
        home.write("ssh-to-test-host", "#!/bin/sh\nexec ssh -F '" + sshd->config().string() + "' \"$@\"\n");
    std::filesystem::permissions(wrapper, std::filesystem::perms::owner_all);
    auto file = test::statusFile("codex-cli", "r1", SessionState::waiting, std::chrono::system_clock::now());
    file["pid"] = ::getpid();
    remote.write("r1.json", file.dump());

    const auto tovrin = "export TOVRIN_SSH='" + wrapper.string() + "'; \"$TOVRIN\" ";
    const auto status = home.path() / "status";
    ASSERT_EQ(test::runShell(tovrin + "hosts add " + test::LocalSshd::host, home, status).exitCode, 0);
    const auto listed = nlohmann::json::parse(test::runShell(tovrin + "status --json", home, status).out);
    ASSERT_EQ(listed.size(), 1u) << listed.dump();
    EXPECT_EQ(listed[0]["host"], test::LocalSshd::host);
    EXPECT_EQ(listed[0]["state"], "waiting");

    sshd.reset();
    const auto text = test::runShell(tovrin + "status", home, status).out;
    EXPECT_NE(text.find(std::string("! ") + test::LocalSshd::host + " can't be reached"), std::string::npos)
        << text;
}

} // namespace
} // namespace tovrin
