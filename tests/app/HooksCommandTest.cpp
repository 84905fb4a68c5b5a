#include "app/RunTovrin.h"
#include "support/LocalSshd.h"
#include "support/SamplePayload.h"
#include "support/TempDir.h"

#include <filesystem>
#include <gtest/gtest.h>
#include <memory>
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

// The private sshd as a remote host whose commands see `remoteHome` as their home, reached through a
// wrapper: ssh reads its configuration from the password database's home, not $HOME.
struct RemoteHost {
    test::TempDir home, remoteHome;
    std::unique_ptr<test::LocalSshd> sshd;
    fs::path wrapper;

    explicit RemoteHost(std::vector<std::string> environment = {}) {
        environment.push_back("HOME=" + remoteHome.path().string());
        sshd = std::make_unique<test::LocalSshd>("", environment);
        wrapper = home.write("ssh-to-test-host",
                             "#!/bin/sh\nexec ssh -F '" + sshd->config().string() + "' \"$@\"\n");
        fs::permissions(wrapper, fs::perms::owner_all);
    }
    // Standard output and error of `tovrin hooks <args> --host <the test host>`, then "=<exit code>".
    std::string hooks(const std::string& args) const {
        return test::runShell("TOVRIN_SSH='" + wrapper.string() + "' \"$TOVRIN\" hooks " + args + " --host " +
                                  test::LocalSshd::host + " 2>&1; echo \"=$?\"",
                              home, home.path() / "status")
            .out;
    }
};

const std::string mine = R"({"model": "m", "hooks": {"Stop": [{"hooks": [{"command": "say"}]}]}})";

// The remote file ends up as a local install would write it, for that home; the writer beside it.
TEST(HooksCommand, InstallsOnARemoteHostAsOnThisMachineAndOnlyOnce) {
    if (!test::LocalSshd::available()) GTEST_SKIP() << "sshd or ssh-keygen is not installed";
    RemoteHost host;
    const auto remote = host.remoteHome.write(".claude/settings.json", mine);
    const auto out = host.hooks("install claude-code");
    EXPECT_NE(out.find("Installed the hooks of Claude Code on " + std::string(test::LocalSshd::host)),
              std::string::npos)
        << out;
    EXPECT_TRUE(out.ends_with("=0\n")) << out;

    test::TempDir local;
    const auto here = local.write(".claude/settings.json", mine);
    ASSERT_EQ(test::runTovrin("hooks install claude-code", local, local.path() / "status").exitCode, 0);
    auto expected = test::readText(here);
    for (auto at = expected.find(local.path().string()); at != std::string::npos;
         at = expected.find(local.path().string(), at))
        expected.replace(at, local.path().string().size(), host.remoteHome.path().string());
    const auto installed = test::readText(remote);
    EXPECT_EQ(installed, expected);
    EXPECT_EQ(json::parse(installed)["hooks"]["Stop"][0]["hooks"][0]["command"], "say");
    EXPECT_EQ(test::readText(remote.string() + ".tovrin.orig"), mine);

    const auto writer = host.remoteHome.path() / ".tovrin/agent-status.sh";
    EXPECT_EQ(test::readText(writer), test::readText(local.path() / ".tovrin/agent-status.sh"));
    EXPECT_EQ(fs::status(writer).permissions() & fs::perms::all, fs::perms(0755));
    EXPECT_EQ(test::readText(host.remoteHome.path() / ".tovrin/.writer-version"),
              test::readText(local.path() / ".tovrin/.writer-version"));

    EXPECT_TRUE(host.hooks("install claude-code").ends_with("=0\n"));
    EXPECT_EQ(test::readText(remote), installed);
    EXPECT_EQ(test::readText(remote.string() + ".tovrin.orig"), mine);
    const auto left = test::entriesOf(remote.parent_path());
    EXPECT_EQ(left, (std::vector<std::string>{"settings.json", "settings.json.tovrin.bak",
                                              "settings.json.tovrin.orig"}));

    EXPECT_TRUE(host.hooks("uninstall claude-code").ends_with("=0\n"));
    EXPECT_EQ(json::parse(test::readText(remote))["hooks"]["Stop"].size(), 1u) << test::readText(remote);
}

// Refused as on this machine, by a remote user who may be root: whose write access says nothing.
TEST(HooksCommand, LeavesRemoteFilesItMustNotChangeAsTheyAre) {
    if (!test::LocalSshd::available()) GTEST_SKIP() << "sshd or ssh-keygen is not installed";
    RemoteHost host;
    const auto commented = host.remoteHome.write(".claude/settings.json", "{ // mine\n}");
    const auto readOnly = host.remoteHome.write(".codex/hooks.json", "{}");
    fs::permissions(readOnly, fs::perms::owner_read | fs::perms::group_read);
    const struct {
        std::string id;
        fs::path file;
        std::string content, refusal;
    } cases[] = {
        {"claude-code", commented, "{ // mine\n}", "settings.json is not plain JSON (it may use comments)."},
        {"codex", readOnly, "{}", "hooks.json is read-only."},
    };
    for (const auto& c : cases) {
        const auto out = host.hooks("install " + c.id);
        EXPECT_NE(out.find(c.refusal + " Tovrin left it untouched.\n=1\n"), std::string::npos) << out;
        EXPECT_EQ(test::entriesOf(c.file.parent_path()), std::vector<std::string>{c.file.filename()});
        EXPECT_EQ(test::readText(c.file), c.content);
    }
}

// Nothing is written to a host where the writer could not run, or that can't be reached.
TEST(HooksCommand, ChangesNothingOnAHostWithoutJqOrOutOfReach) {
    if (!test::LocalSshd::available()) GTEST_SKIP() << "sshd or ssh-keygen is not installed";
    test::TempDir bin;
    fs::create_symlink("/bin/sh", bin.path() / "sh");
    RemoteHost host({"PATH=" + bin.path().string()});
    host.remoteHome.write(".claude/settings.json", mine);
    const std::string name = test::LocalSshd::host;
    EXPECT_EQ(host.hooks("install claude-code"), "tovrin hooks: jq is not installed on " + name +
                                                     "; the status writer needs it there. Install jq on " +
                                                     name + " and try again.\n=1\n");
    EXPECT_EQ(test::entriesOf(host.remoteHome.path()), std::vector<std::string>{".claude"});
    EXPECT_EQ(test::entriesOf(host.remoteHome.path() / ".claude"), std::vector<std::string>{"settings.json"});

    host.sshd->kill();
    const auto out = host.hooks("install claude-code");
    EXPECT_NE(out.find(name + " can't be reached: "), std::string::npos) << out;
    EXPECT_NE(out.find("Connection refused"), std::string::npos) << out;
}

} // namespace
} // namespace tovrin
