#include "ui/viewmodels/ChipLayout.h"

#include <gtest/gtest.h>

namespace tovrin {
namespace {

using namespace ChipLayout;

TEST(ChipLayout, VisibilityFollowsTheSwitchesAndTheSessions) {
    const auto waiting = AggregateStatus::waiting(2), working = AggregateStatus::working(),
               neutral = AggregateStatus::neutral();
    const struct {
        bool show, onlyWaiting;
        AggregateStatus aggregate;
        bool hasSessions, expected;
    } cases[] = {
        {true, false, neutral, false, false}, // no sessions
        {true, false, neutral, true, true},   // only idle
        {true, false, working, true, true},   {true, false, waiting, true, true},
        {true, true, neutral, false, false},  {true, true, neutral, true, false},
        {true, true, working, true, false},   {true, true, waiting, true, true},
        {false, false, waiting, true, false}, {false, true, waiting, true, false},
        {false, false, working, true, false},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(shouldShow({c.show, c.onlyWaiting, c.aggregate, c.hasSessions}), c.expected)
            << c.show << c.onlyWaiting << static_cast<int>(c.aggregate.kind) << c.hasSessions;
    }
    // Without a tray the chip is the way in: shown even when switched off and with nothing to show.
    EXPECT_TRUE(shouldShow({false, true, neutral, false, true}));
}

TEST(ChipLayout, OnlyAChangeOfVisibilityTouchesTheWindow) {
    EXPECT_EQ(visibilityChange(true, false), VisibilityChange::show);
    EXPECT_EQ(visibilityChange(false, true), VisibilityChange::hide);
    EXPECT_EQ(visibilityChange(true, true), VisibilityChange::none);
    EXPECT_EQ(visibilityChange(false, false), VisibilityChange::none);
}

// No floor here: the stored setting keeps its own.
TEST(ChipLayout, AlphaIsThePercentageCappedAtOpaque) {
    EXPECT_DOUBLE_EQ(alpha(5), 0.05);
    EXPECT_DOUBLE_EQ(alpha(55), 0.55);
    EXPECT_EQ(alpha(150), 1.0);
}

TEST(ChipLayout, ASavedCornerWinsOverTheScreenWhichWinsOverWhereTheFrameIs) {
    const ChipRect screen{100, 25, 1440, 875};
    const ChipRect placed = placedFrame(initialFrame, {}, screen);
    EXPECT_EQ(placed.topRight(), (ChipPoint{1540 - 16, 25 + 16})) << "inset from the screen's corner";
    EXPECT_EQ(placed.size(), initialFrame.size());

    // Not checked against the screens; a missing y reads as zero.
    EXPECT_EQ(placedFrame(initialFrame, {-300.0, 5000.0}, screen), (ChipRect{-460, 5000, 160, 48}));
    EXPECT_EQ(placedFrame(initialFrame, {900.0, std::nullopt}, screen).topRight(), (ChipPoint{900, 0}));

    // Without a screen the frame stays; a y without an x is no saved corner.
    const ChipRect frame{40, 50, 160, 48};
    EXPECT_EQ(placedFrame(frame, {}, std::nullopt), frame);
    EXPECT_EQ(placedFrame(frame, {std::nullopt, 700.0}, std::nullopt), frame);

    // Saved while unfolded, the corner comes back for the folded chip.
    const ChipRect draggedExpanded{600, 200, 331, 420};
    const ChipPoint saved = cornerToSave(draggedExpanded);
    const ChipRect restored = placedFrame(initialFrame, {saved.x, saved.y}, screen);
    EXPECT_EQ(restored.topRight(), draggedExpanded.topRight());
    EXPECT_EQ(restored.size(), initialFrame.size());
}

TEST(ChipLayout, GrowingAndShrinkingMoveOnlyTheLeftAndLowerEdges) {
    Resizer resizer;
    ChipRect frame{1000, 700, 160, 48};
    const ChipPoint corner = frame.topRight();
    for (ChipSize size : {ChipSize{176, 64}, ChipSize{331, 412}, ChipSize{150, 60}}) {
        const auto next = resizer.resize(frame, size);
        ASSERT_TRUE(next.has_value()) << size.width;
        EXPECT_EQ(next->topRight(), corner);
        EXPECT_EQ(next->size(), size);
        EXPECT_EQ(resizer.lastSize(), size);
        frame = *next;
    }
}

TEST(ChipLayout, SmallOrDegenerateSizesAreIgnored) {
    Resizer resizer;
    const ChipRect frame{1000, 700, 160, 48};
    for (ChipSize size : {ChipSize{0, 0}, ChipSize{1, 80}, ChipSize{80, 1}, ChipSize{-5, 40}}) {
        EXPECT_FALSE(resizer.resize(frame, size).has_value()) << size.width << "x" << size.height;
    }
    EXPECT_EQ(resizer.lastSize(), (ChipSize{}));

    ASSERT_TRUE(resizer.resize(frame, {176, 64}).has_value());
    EXPECT_FALSE(resizer.resize(frame, {176.3, 63.7}).has_value());
    EXPECT_EQ(resizer.lastSize(), (ChipSize{176, 64})); // an ignored size does not move the reference
    EXPECT_FALSE(resizer.resize(frame, {176.49, 64.49}).has_value());
    const auto widened = resizer.resize(frame, {176.5, 64});
    ASSERT_TRUE(widened.has_value());
    EXPECT_EQ(widened->width, 176.5);
    EXPECT_TRUE(resizer.resize(*widened, {176.5, 63.5}).has_value());
}

} // namespace
} // namespace tovrin
