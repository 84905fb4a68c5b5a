#include "ui/viewmodels/ToolIconSources.h"

#include <gtest/gtest.h>

namespace tovrin {
namespace {

using namespace ToolIconSources;
using Paths = std::vector<std::filesystem::path>;

TEST(ToolIconSourcesTest, OverridesAreTriedInTheirFixedOrderAndStayInTheFolder) {
    const auto folder = overrideFolder("/home/ada");
    EXPECT_EQ(folder, std::filesystem::path("/home/ada/.tovrin/icons"));
    EXPECT_EQ(overrideCandidates(folder, "copilot-cli"),
              (Paths{folder / "copilot-cli.png", folder / "copilot-cli.svg", folder / "copilot-cli.jpg",
                     folder / "copilot-cli.jpeg"}));
    EXPECT_TRUE(overrideCandidates(folder, "../secret").empty());
    EXPECT_TRUE(overrideCandidates(folder, "").empty());
}

TEST(ToolIconSourcesTest, OnlyToolsThatAreApplicationsHaveDesktopIds) {
    EXPECT_EQ(desktopIds("copilot-vscode"), (std::vector<std::string>{"code", "code-insiders", "vscodium"}));
    EXPECT_EQ(desktopIds("claude-code").front(), "claude-desktop");
    EXPECT_EQ(desktopIds("cursor-cli"), desktopIds("cursor-ide"));
    EXPECT_TRUE(desktopIds("codex-cli").empty());
    EXPECT_TRUE(desktopIds("copilot-cli").empty());
}

TEST(ToolIconSourcesTest, OnlyCodexHasAMarkInATwentyFourSquare) {
    const std::string_view mark = brandLogoSvg("codex-cli");
    EXPECT_NE(mark.find(R"(viewBox="0 0 24 24")"), std::string_view::npos);
    EXPECT_TRUE(brandLogoSvg("claude-code").empty());
}

} // namespace
} // namespace tovrin
