#include "ui/viewmodels/PanelContent.h"

#include "ui/viewmodels/PanelPlacement.h"
#include "ui/viewmodels/TrayIconLook.h"

#include <gtest/gtest.h>

namespace tovrin {
namespace {

TEST(PanelContentTest, FlameAndTrayLookFollowTheRollUp) {
    EXPECT_EQ(PanelContent::aggregateFlame(AggregateStatus::waiting(1)), FlamePalette::red());
    EXPECT_EQ(PanelContent::aggregateFlame(AggregateStatus::working()), FlamePalette::amber());
    EXPECT_EQ(PanelContent::aggregateFlame(AggregateStatus::neutral()), std::nullopt);

    const auto waiting = TrayIconLook::of(AggregateStatus::waiting(12));
    EXPECT_EQ(waiting.symbol, "eye.fill");
    EXPECT_EQ(waiting.color, TrayIconColors::red);
    EXPECT_EQ(waiting.count, std::optional<std::string>("12"));

    const auto working = TrayIconLook::of(AggregateStatus::working());
    EXPECT_EQ(working.symbol, "eye");
    EXPECT_EQ(working.color, TrayIconColors::green);
    EXPECT_EQ(working.count, std::nullopt);

    const auto neutral = TrayIconLook::of(AggregateStatus::neutral());
    EXPECT_EQ(neutral.symbol, "eye.slash");
    EXPECT_EQ(neutral.color, TrayIconColors::secondary);
    EXPECT_EQ(neutral.count, std::nullopt);
    // Each roll-up has a look of its own, so the icon can tell when to redraw.
    EXPECT_NE(waiting, TrayIconLook::of(AggregateStatus::waiting(11)));
}

TEST(PanelContentTest, ToggleOffersTheOppositeOfTheCurrentSetting) {
    EXPECT_EQ(PanelContent::floatingWindowToggle(true),
              (PanelContent::LabelledSymbol{"Hide floating window", "eye.slash"}));
    EXPECT_EQ(PanelContent::floatingWindowToggle(false),
              (PanelContent::LabelledSymbol{"Show floating window", "eye"}));
}

class PanelPlacementTest : public ::testing::Test {
protected:
    // A 1920 by 1080 screen with a 32-high panel at the top.
    PanelRect available{0, 32, 1920, 1048};
};

TEST_F(PanelPlacementTest, DropsBelowATopIconAndRisesAboveABottomOne) {
    const PanelRect top = PanelPlacement::frame({900, 4, 24, 24}, 375, 400, available);
    EXPECT_EQ(top, (PanelRect{912 - 187, 32, 375, 400})) << "below the bar, not over it";

    const PanelRect bottom = PanelPlacement::frame({900, 1050, 24, 24}, 375, 400, {0, 0, 1920, 1040});
    EXPECT_EQ(bottom.bottom(), 1040) << "above the bar, not over it";
    const PanelRect overBottomEdge = PanelPlacement::frame({900, 900, 24, 24}, 375, 400, {0, 0, 1920, 1040});
    EXPECT_EQ(overBottomEdge.bottom(), 900 - PanelPlacement::gap);
    EXPECT_EQ(bottom.x, 912 - 187);
}

TEST_F(PanelPlacementTest, StaysInsideTheScreenAtItsEdges) {
    const PanelRect rightEdge = PanelPlacement::frame({1900, 4, 20, 24}, 375, 300, available);
    EXPECT_EQ(rightEdge.right(), 1920);
    const PanelRect leftEdge = PanelPlacement::frame({0, 40, 20, 20}, 375, 300, available);
    EXPECT_EQ(leftEdge.x, 0);
    EXPECT_EQ(leftEdge.y, 64);

    // Taller than the screen: cut to it, top to bottom.
    const PanelRect tall = PanelPlacement::frame({900, 4, 24, 24}, 375, 5000, available);
    EXPECT_EQ(tall.y, 32);
    EXPECT_EQ(tall.height, 1048);

    // A second screen to the right, with the icon on it.
    const PanelRect second = PanelPlacement::frame({3800, 0, 24, 24}, 375, 300, {1920, 0, 1920, 1080});
    EXPECT_EQ(second.right(), 3840);
    EXPECT_EQ(second.y, 24 + PanelPlacement::gap);
}

} // namespace
} // namespace tovrin
