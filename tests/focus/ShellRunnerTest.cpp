#include "focus/ShellRunner.h"

#include "support/FakeFocusPorts.h"

#include <gtest/gtest.h>
#include <set>

namespace tovrin {
namespace {

using Files = std::vector<std::string>;

struct ResolveCase {
    const char* what;
    std::string name;
    std::optional<std::string> path;
    std::optional<std::string> expected;
    std::set<std::string> executables;
    Files probed{}; // every file tested, in order; empty: not checked
};

TEST(ShellRunnerTest, ResolveSearchesTheFixedFoldersFirstThenPath) {
    const Files fixed{"/usr/local/bin/wezterm", "/usr/bin/wezterm", "/bin/wezterm", "/usr/sbin/wezterm",
                      "/sbin/wezterm"};
    Files fixedThenPath = fixed;
    fixedThenPath.push_back("/opt/tools/wezterm");
    const std::set<std::string> decoys{"/usr/bin/tmux", "/x/tmux", "/usr/bin//nowhere/tmux"};
    const std::vector<ResolveCase> cases{
        {"fixed beats PATH", "tmux", "/opt/tools", "/usr/bin/tmux", {"/opt/tools/tmux", "/usr/bin/tmux"}},
        {"fixed in order", "tmux", {}, "/usr/local/bin/tmux", {"/usr/bin/tmux", "/usr/local/bin/tmux"}},
        {"PATH entries keep their order", "tmux", "/a:/b", "/a/tmux", {"/b/tmux", "/a/tmux"}},
        {"empty PATH entries are dropped", "wezterm", "::/opt/tools:", std::nullopt, {}, fixedThenPath},
        {"without PATH only the fixed folders", "wezterm", std::nullopt, std::nullopt, {}, fixed},
        {"an absolute name stands for itself", "/usr/bin/tmux", "/x", "/usr/bin/tmux", {"/usr/bin/tmux"}},
        {"an absolute name is never searched for", "/nowhere/tmux", "/x", {}, decoys, {"/nowhere/tmux"}},
    };
    for (const ResolveCase& c : cases) {
        SCOPED_TRACE(c.what);
        std::vector<std::string> probed;
        const auto found = resolveProgram(c.name, c.path, [&](const std::string& file) {
            probed.push_back(file);
            return c.executables.contains(file);
        });
        EXPECT_EQ(found, c.expected);
        if (!c.probed.empty()) {
            EXPECT_EQ(probed, c.probed);
        }
    }
}

TEST(ShellRunnerTest, RunAndOutputGoToTheResolvedProgram) {
    test::FocusLog log;
    test::FakeProcessRunner processes(log);
    ShellRunner shell(
        processes, [] { return std::optional<std::string>("/opt/tools"); },
        [](const std::string& file) { return file == "/opt/tools/tmux"; });

    EXPECT_TRUE(shell.run("tmux", {"select-pane", "-t", "%3"}));
    EXPECT_FALSE(shell.run("wezterm", {"cli"})) << "not found: nothing to start";
    processes.startSucceeds = false;
    EXPECT_FALSE(shell.run("tmux", {}));
    processes.outputs["/opt/tools/tmux ls"] = "0: 1 windows";
    EXPECT_EQ(shell.output("tmux", {"ls"}), "0: 1 windows");
    EXPECT_EQ(shell.output("wezterm", {"ls"}), std::nullopt);
    EXPECT_EQ(log.entries(), (std::vector<std::string>{"start /opt/tools/tmux select-pane -t %3",
                                                       "start /opt/tools/tmux", "read /opt/tools/tmux ls"}));
}

} // namespace
} // namespace tovrin
