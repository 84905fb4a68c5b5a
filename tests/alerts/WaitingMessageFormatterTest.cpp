#include "alerts/WaitingMessageFormatter.h"

#include "support/SampleSessions.h"

#include <gtest/gtest.h>

namespace tovrin {
namespace {

AgentSession waiting(const std::string& tool, std::optional<std::string> root, std::string cwd) {
    auto s = test::session(tool, "s", SessionState::waiting, TimePoint{});
    s.root = std::move(root);
    s.cwd = std::move(cwd);
    return s;
}

TEST(WaitingMessageFormatterTest, OneSessionNamesToolAndProjectFolder) {
    struct Case {
        AgentSession session;
        std::string title, body, message;
    };
    const Case cases[] = {
        {waiting("claude-code", "/Users/a/proj", "/Users/a/proj/sub"), "Claude Code is waiting", "proj",
         "Claude Code is waiting\nproj"},
        {waiting("codex-cli", std::nullopt, "/home/dev/app/"), "Codex is waiting", "app",
         "Codex is waiting\napp"},
        {waiting("codex-cli", std::nullopt, "/"), "Codex is waiting", "/", "Codex is waiting\n/"},
        {waiting("codex-cli", std::nullopt, ""), "Codex is waiting", "", "Codex is waiting"},
        // An empty root is still the root: cwd is not consulted.
        {waiting("codex-cli", "", "/home/dev/app"), "Codex is waiting", "", "Codex is waiting"},
        {waiting("some-new-tool", std::nullopt, "relative"), "some-new-tool is waiting", "relative",
         "some-new-tool is waiting\nrelative"},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.session.cwd);
        const auto summary = WaitingMessageFormatter::summary({c.session});
        EXPECT_EQ(summary.title, c.title);
        EXPECT_EQ(summary.body, c.body);
        EXPECT_EQ(WaitingMessageFormatter::message({c.session}), c.message);
    }
}

TEST(WaitingMessageFormatterTest, OtherCountsListToolNamesInOrder) {
    const auto codex = waiting("codex-cli", "/a", "/a");
    const auto unknown = waiting("some-new-tool", "/b", "/b");
    const auto claude = waiting("claude-code", "/c", "/c");

    EXPECT_EQ(WaitingMessageFormatter::summary({codex, unknown}),
              (WaitingMessageFormatter::Summary{"2 agents are waiting", "Codex, some-new-tool"}));
    EXPECT_EQ(WaitingMessageFormatter::message({claude, codex, claude}),
              "3 agents are waiting\nClaude Code, Codex, Claude Code");
    EXPECT_EQ(WaitingMessageFormatter::summary({}),
              (WaitingMessageFormatter::Summary{"0 agents are waiting", ""}));
    EXPECT_EQ(WaitingMessageFormatter::message({}), "0 agents are waiting");
    // Remote sessions name their host, alone or in a list.
    auto remote = waiting("codex-cli", "/home/dev/app", "/home/dev/app");
    remote.host = "dev@build";
    EXPECT_EQ(WaitingMessageFormatter::message({remote}), "Codex is waiting\napp on dev@build");
    EXPECT_EQ(WaitingMessageFormatter::summary({claude, remote}).body, "Claude Code, Codex on dev@build");
    // A tool with an empty name still takes its place in the list.
    EXPECT_EQ(WaitingMessageFormatter::summary({waiting("", "/x", "/x"), codex}).body, ", Codex");
}

} // namespace
} // namespace tovrin
