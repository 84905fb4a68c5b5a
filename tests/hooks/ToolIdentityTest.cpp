#include "hooks/ToolIdentity.h"

#include <gtest/gtest.h>

namespace tovrin {
namespace {

TEST(ToolIdentity, EveryKnownIdResolvesToItsOwnRowInSwitchOrder) {
    std::vector<std::string> ids;
    for (const auto& tool : ToolIdentity::all()) {
        ids.push_back(tool.id);
        EXPECT_EQ(ToolIdentity::named(tool.id), tool);
        EXPECT_NE(tool.symbol, "questionmark.circle.fill") << tool.id;
    }
    EXPECT_EQ(ids,
              (std::vector<std::string>{"claude-code", "codex-cli", "cursor-cli", "cursor-ide", "copilot-cli",
                                        "copilot-vscode", "antigravity-cli", "antigravity-ide"}));
}

TEST(ToolIdentity, AnUnknownIdFallsBackToItselfWithTheQuestionMark) {
    // The look-up is exact: neither the empty string nor another spelling matches a row.
    for (const std::string id : {"", "Claude-Code", "claude-code ", "gemini-cli"}) {
        SCOPED_TRACE("id '" + id + "'");
        const auto tool = ToolIdentity::named(id);
        EXPECT_EQ(tool.id, id);
        EXPECT_EQ(tool.displayName, id);
        EXPECT_EQ(tool.symbol, "questionmark.circle.fill");
        EXPECT_EQ(tool.tint.alpha, 1.0);
        EXPECT_EQ(tool.tint.red, tool.tint.green) << "plain gray";
    }
}

} // namespace
} // namespace tovrin
