#include "focus/ShellRunner.h"

#include "support/FakeFocusPorts.h"

#include <gtest/gtest.h>
#include <set>

namespace tovrin {
namespace {

struct ResolveCase {
    const char* what;
    std::string name;
    std::optional<std::string> path;
    std::set<std::string> executables;
    std::optional<std::string> expected;
    std::vector<std::string> probed; // every file tested, in order; empty: not checked
};

TEST(ShellRunnerTest, ResolveSearchesTheFixedFoldersFirstThenPath) {
    const std::vector<std::string> fixed{"/opt/homebrew/bin/wezterm", "/usr/local/bin/wezterm",
                                         "/usr/bin/wezterm",          "/bin/wezterm",
                                         "/usr/sbin/wezterm",         "/sbin/wezterm"};
    auto withTail = [&](std::vector<std::string> tail) {
        std::vector<std::string> all = fixed;
        all.insert(all.end(), tail.begin(), tail.end());
        return all;
    };
    const std::vector<ResolveCase> cases{
        {"a fixed folder beats PATH",
         "tmux",
         "/opt/tools",
         {"/opt/tools/tmux", "/usr/bin/tmux"},
         "/usr/bin/tmux",
         {}},
        {"the fixed folders keep their order",
         "tmux",
         std::nullopt,
         {"/usr/bin/tmux", "/opt/homebrew/bin/tmux"},
         "/opt/homebrew/bin/tmux",
         {}},
        {"PATH entries keep their order", "tmux", "/a:/b", {"/b/tmux", "/a/tmux"}, "/a/tmux", {}},
        {"empty PATH entries are dropped",
         "wezterm",
         "::/opt/tools:",
         {},
         std::nullopt,
         withTail({"/opt/tools/wezterm"})},
        {"without PATH only the fixed folders", "wezterm", std::nullopt, {}, std::nullopt, fixed},
        {"an absolute name stands for itself", "/usr/bin/tmux", "/x", {"/usr/bin/tmux"}, "/usr/bin/tmux", {}},
        {"an absolute name is never searched for",
         "/nowhere/tmux",
         "/x",
         {"/usr/bin/tmux", "/x/tmux", "/usr/bin//nowhere/tmux"},
         std::nullopt,
         {"/nowhere/tmux"}},
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

TEST(ShellRunnerTest, RunStartsTheResolvedProgramAndSaysWhetherItStarted) {
    test::FocusLog log;
    test::FakeProcessRunner processes(log);
    ShellRunner shell(
        processes, [] { return std::optional<std::string>("/opt/tools"); },
        [](const std::string& file) { return file == "/opt/tools/tmux"; });

    EXPECT_TRUE(shell.run("tmux", {"select-pane", "-t", "%3"}));
    EXPECT_FALSE(shell.run("wezterm", {"cli"})) << "not found: nothing to start";
    processes.startSucceeds = false;
    EXPECT_FALSE(shell.run("tmux", {}));
    EXPECT_EQ(log.entries(),
              (std::vector<std::string>{"start /opt/tools/tmux select-pane -t %3", "start /opt/tools/tmux"}));
    EXPECT_FALSE(shell.appleScript(terminalScript("/dev/pts/1")));
}

TEST(ShellRunnerTest, EscapingDoublesBackslashesBeforeEscapingQuotes) {
    const std::vector<std::pair<std::string, std::string>> cases{
        {"", ""},
        {"/dev/ttys001", "/dev/ttys001"},
        {R"(a"b)", R"(a\"b)"},
        {R"(a\b)", R"(a\\b)"},
        {R"(\")", R"(\\\")"},
        {R"(""\\)", R"(\"\"\\\\)"},
    };
    for (const auto& [value, escaped] : cases)
        EXPECT_EQ(escapeForScript(value), escaped) << value;
}

TEST(ShellRunnerTest, TerminalScriptSelectsTheTabOfTheDevice) {
    EXPECT_EQ(terminalScript(R"(/dev/tty"1)"), R"(tell application "Terminal"
  activate
  repeat with aWindow in windows
    repeat with aTab in tabs of aWindow
      if tty of aTab is "/dev/tty\"1" then
        set selected of aTab to true
        set index of aWindow to 1
      end if
    end repeat
  end repeat
end tell)");
}

TEST(ShellRunnerTest, ITermScriptComparesThePartAfterTheLastColon) {
    const std::string expected = R"(tell application "iTerm"
  activate
  repeat with aWindow in windows
    repeat with aTab in tabs of aWindow
      repeat with aSession in sessions of aTab
        if (id of aSession) is "ABCD-1234" then
          select aWindow
          select aTab
          select aSession
        end if
      end repeat
    end repeat
  end repeat
end tell)";
    EXPECT_EQ(iTermScript("w0t1p0:ABCD-1234"), expected);

    const std::vector<std::pair<std::string, std::string>> cases{
        {"ABCD-1234", R"(is "ABCD-1234" then)"},
        {"a:b:c", R"(is "c" then)"},
        {"w0t1p0:", R"(is "" then)"},
        {R"(w0:x"y\)", R"(is "x\"y\\" then)"},
    };
    for (const auto& [id, line] : cases) {
        const std::string script = iTermScript(id);
        EXPECT_NE(script.find(line), std::string::npos) << id << "\n" << script;
    }
}

} // namespace
} // namespace tovrin
