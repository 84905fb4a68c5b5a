#include "ui/viewmodels/FlameCurves.h"

#include <gtest/gtest.h>

namespace tovrin {
namespace {

using namespace FlameCurves;

TEST(FlameCurves, FlickerStaysWithinUnitRangeButUsesMostOfIt) {
    double lo = 1, hi = 0;
    for (int i = 0; i < 200000; ++i) {
        const double f = flicker(i * 0.0007 - 20);
        lo = std::min(lo, f);
        hi = std::max(hi, f);
    }
    EXPECT_GE(lo, 0.0);
    EXPECT_LE(hi, 1.0);
    EXPECT_LT(lo, 0.1);
    EXPECT_GT(hi, 0.9);
}

// The middle stop follows the rise, but never so far that the gradient's order breaks.
TEST(FlameCurves, MiddleStopMovesWithTheRiseBetweenTheEndsAndStopsAtItsLimits) {
    const auto red = FlamePalette::red();
    const FlameGradient g = gradient(red, 0.1);
    EXPECT_EQ(g[0], (GradientStop{0, red.core}));
    EXPECT_EQ(g[1], (GradientStop{midStopLocation(0.1), red.mid}));
    EXPECT_EQ(g[2], (GradientStop{1, red.base}));

    EXPECT_LT(midStopLocation(-0.1), midStopLocation(0));
    EXPECT_LT(midStopLocation(0), midStopLocation(0.1));
    EXPECT_EQ(midStopLocation(-2), midStopLocation(-50));
    EXPECT_EQ(midStopLocation(2), midStopLocation(50));
    EXPECT_GT(midStopLocation(-50), 0.0);
    EXPECT_LT(midStopLocation(50), 1.0);
}

// A stronger flicker never dims the frame; the still frames rest between the weakest and the
// strongest flicker, with the gradient where no rise puts it.
TEST(FlameCurves, FramesGrowWithTheFlickerAndStillFramesRestBetween) {
    const auto red = FlamePalette::red();
    const FireTextFrame dim = burn(red, 0, 0), bright = burn(red, 1, 0), text = fireTextStillFrame(red);
    const FlameFillFrame dark = wash(red, 0, 0), light = wash(red, 1, 0), fill = flameFillStillFrame(red);
    auto between = [](double lo, double v, double hi) { return lo < v && v < hi; };
    EXPECT_TRUE(between(dim.brightness, text.brightness, bright.brightness));
    EXPECT_TRUE(between(dim.outerGlow.opacity, text.outerGlow.opacity, bright.outerGlow.opacity));
    EXPECT_TRUE(between(dim.outerGlow.radius, text.outerGlow.radius, bright.outerGlow.radius));
    EXPECT_TRUE(between(dim.innerGlow.opacity, text.innerGlow.opacity, bright.innerGlow.opacity));
    EXPECT_TRUE(between(dark.brightness, fill.brightness, light.brightness));
    EXPECT_TRUE(between(dark.overlayOpacity, fill.overlayOpacity, light.overlayOpacity));
    EXPECT_LT(dark.brightness, 0) << "a weak flicker darkens the fill";
    EXPECT_EQ(text.fill, gradient(red, 0));
    EXPECT_EQ(fill.fill, gradient(red, 0));
    // Animated frames rise and fall with time.
    const auto amber = FlamePalette::amber();
    EXPECT_NE(fireTextFrame(amber, 0.3).fill, fireTextFrame(amber, 0.6).fill);
    EXPECT_NE(flameFillFrame(amber, 0.3).fill, flameFillFrame(amber, 0.6).fill);
}

TEST(FlameCurves, TimeIsCountedInSeconds) {
    const TimePoint reference = std::chrono::sys_days(std::chrono::year{2001} / 1 / 1);
    EXPECT_NEAR(timeOf(addSeconds(reference, 90.25)) - timeOf(reference), 90.25, 1e-6);
}

TEST(FlameCurves, OnlyAFlameWithMotionAllowedIsRedrawnOnTheSchedule) {
    const struct {
        bool hasFlame, reduceMotion;
        FireTextMode mode;
    } cases[] = {{false, false, FireTextMode::flat},
                 {false, true, FireTextMode::flat},
                 {true, true, FireTextMode::still},
                 {true, false, FireTextMode::burning}};
    for (const auto& c : cases) {
        const FireTextMode mode = fireTextMode(c.hasFlame, c.reduceMotion);
        EXPECT_EQ(mode, c.mode) << c.hasFlame << c.reduceMotion;
        EXPECT_EQ(needsFlickerSchedule(mode), c.mode == FireTextMode::burning);
    }
}

} // namespace
} // namespace tovrin
