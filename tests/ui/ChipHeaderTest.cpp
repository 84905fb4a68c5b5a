#include "ui/viewmodels/ChipHeader.h"

#include "core/JsonFileDefaultsStore.h"
#include "support/MemoryDefaultsStore.h"
#include "support/TempDir.h"
#include "ui/viewmodels/ChipCornerDefaults.h"

#include <gtest/gtest.h>

namespace tovrin {
namespace {

using Kind = AggregateStatus::Kind;

TEST(ChipHeader, SummaryJoinsNonZeroCountsInFixedOrder) {
    EXPECT_EQ(ChipHeader::summaryText(0, 0, 0), "no agents");
    EXPECT_EQ(ChipHeader::summaryText(2, 0, 1), "2 waiting \u00b7 1 idle");
    EXPECT_EQ(ChipHeader::summaryText(0, 3, 0), "3 working");
    EXPECT_EQ(ChipHeader::summaryText(0, 0, 7), "7 idle");
    EXPECT_EQ(ChipHeader::summaryText(12, 1, 140), "12 waiting \u00b7 1 working \u00b7 140 idle");
}

TEST(ChipHeader, LookFollowsTheRollUp) {
    const auto waiting = ChipHeader::content(Kind::waiting, 1, 2, 0, false);
    EXPECT_EQ(waiting.symbol, "eye.fill");
    EXPECT_EQ(waiting.flame, FlamePalette::red());
    EXPECT_EQ(waiting.tone, ChipHeader::Tone::onFlame);
    EXPECT_EQ(waiting.summary, "1 waiting \u00b7 2 working");

    const auto working = ChipHeader::content(Kind::working, 0, 2, 1, false);
    EXPECT_EQ(working.symbol, "eye");
    EXPECT_EQ(working.flame, FlamePalette::amber());
    EXPECT_EQ(working.tone, ChipHeader::Tone::onFlame);

    const auto idleOnly = ChipHeader::content(Kind::neutral, 0, 0, 3, false);
    EXPECT_EQ(idleOnly.symbol, "eye.slash");
    EXPECT_EQ(idleOnly.flame, std::nullopt);
    EXPECT_EQ(idleOnly.tone, ChipHeader::Tone::secondary);
}

TEST(ChipHeader, ChevronAndUnfoldingNeedSessions) {
    EXPECT_EQ(ChipHeader::content(Kind::neutral, 0, 0, 1, false).chevron, "chevron.down");
    EXPECT_EQ(ChipHeader::content(Kind::neutral, 0, 0, 1, true).chevron, "chevron.up");
    EXPECT_EQ(ChipHeader::content(Kind::neutral, 0, 0, 0, true).chevron, std::nullopt);

    EXPECT_TRUE(ChipHeader::toggledExpanded(false, true));
    EXPECT_FALSE(ChipHeader::toggledExpanded(true, true));
    // Without sessions a tap changes nothing, in either state.
    EXPECT_FALSE(ChipHeader::toggledExpanded(false, false));
    EXPECT_TRUE(ChipHeader::toggledExpanded(true, false));

    // Unfolded while the last session goes: the list goes, and returns with the next session.
    EXPECT_FALSE(ChipHeader::showsList(true, false));
    EXPECT_TRUE(ChipHeader::showsList(true, true));
    EXPECT_FALSE(ChipHeader::showsList(false, true));
}

TEST(ChipCornerDefaults, ReadsTheCornerAsStoredWithLenientTypes) {
    MemoryDefaultsStore none;
    EXPECT_EQ(ChipLayout::savedAnchor(ChipCornerDefaults::read(none)), std::nullopt);

    MemoryDefaultsStore onlyX({{"chipTopRightX", 1200}});
    EXPECT_EQ(ChipLayout::savedAnchor(ChipCornerDefaults::read(onlyX)), (ChipPoint{1200, 0}));

    MemoryDefaultsStore wrongTypes({{"chipTopRightX", "far right"}, {"chipTopRightY", 640.5}});
    EXPECT_EQ(ChipLayout::savedAnchor(ChipCornerDefaults::read(wrongTypes)), (ChipPoint{0, 640.5}));
}

TEST(ChipCornerDefaults, CornerSurvivesARestartThroughTheDefaultsFile) {
    test::TempDir dir;
    const auto file = dir.path() / "defaults.json";
    JsonFileDefaultsStore(file).set("chipTopRightX", true); // overwritten below, type and all
    {
        JsonFileDefaultsStore defaults(file);
        ChipCornerDefaults::write(defaults, {1264.25, 784});
    }
    JsonFileDefaultsStore reopened(file);
    EXPECT_EQ(ChipLayout::savedAnchor(ChipCornerDefaults::read(reopened)), (ChipPoint{1264.25, 784}));
}

} // namespace
} // namespace tovrin
