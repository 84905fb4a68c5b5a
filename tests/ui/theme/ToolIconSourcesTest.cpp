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

} // namespace
} // namespace tovrin
