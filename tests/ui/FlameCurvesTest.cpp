#include "ui/viewmodels/FlameCurves.h"

#include <gtest/gtest.h>
#include <numbers>

namespace tovrin {
namespace {

using namespace FlameCurves;

constexpr double pi = std::numbers::pi;

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

TEST(FlameCurves, FlickerAtTheReferenceTimeComesFromThePhasedWavesOnly) {
    // At t = 0 the unphased wave is 0: (0.3 sin 1.3 + 0.2 sin 0.7 + 1) / 2.
    EXPECT_NEAR(flicker(0), 0.7089555, 1e-6);
}

TEST(FlameCurves, RiseCurvesPeakAtTheirAmplitudeAndRepeatWithTheirPeriod) {
    EXPECT_NEAR(fireTextRise(pi / (2 * 5.3)), 0.1, 1e-12);
    EXPECT_NEAR(fireTextRise(3 * pi / (2 * 5.3)), -0.1, 1e-12);
    EXPECT_NEAR(flameFillRise(pi / (2 * 4.7)), 0.12, 1e-12);
    EXPECT_NEAR(flameFillRise(0), 0.0, 1e-12);
    for (double t : {0.37, 12.5, 7.0e8}) {
        EXPECT_NEAR(fireTextRise(t + 2 * pi / 5.3), fireTextRise(t), 1e-6) << t;
        EXPECT_NEAR(flameFillRise(t + 2 * pi / 4.7), flameFillRise(t), 1e-6) << t;
    }
}

TEST(FlameCurves, MiddleStopFollowsRiseWithinItsLimits) {
    const struct {
        double rise, location;
    } cases[] = {{-1, 0.2},    {-0.3, 0.2}, {-0.25, 0.2}, {-0.1, 0.35}, {0, 0.45},
                 {0.12, 0.57}, {0.25, 0.7}, {0.3, 0.7},   {2, 0.7}};
    for (const auto& c : cases)
        EXPECT_NEAR(midStopLocation(c.rise), c.location, 1e-12) << c.rise;
}

TEST(FlameCurves, GradientRunsCoreMidBaseFromTopToBottom) {
    const auto red = FlamePalette::red();
    const FlameGradient g = gradient(red, 0.1);
    EXPECT_EQ(g[0], (GradientStop{0, red.core}));
    EXPECT_EQ(g[1].color, red.mid);
    EXPECT_NEAR(g[1].location, 0.55, 1e-12);
    EXPECT_EQ(g[2], (GradientStop{1, red.base}));
}

TEST(FlameCurves, BurnScalesBrightnessAndGlowsWithFlicker) {
    const auto amber = FlamePalette::amber();
    const struct {
        double f, brightness, outerOpacity, outerRadius, innerOpacity;
    } cases[] = {{0, 0, 0.45, 3, 0}, {1, 0.06, 0.9, 8, 0.35}, {0.25, 0.015, 0.5625, 4.25, 0.0875}};
    for (const auto& c : cases) {
        const FireTextFrame frame = burn(amber, c.f, 0);
        EXPECT_NEAR(frame.brightness, c.brightness, 1e-12) << c.f;
        EXPECT_EQ(frame.outerGlow.color, amber.glow);
        EXPECT_NEAR(frame.outerGlow.opacity, c.outerOpacity, 1e-12) << c.f;
        EXPECT_NEAR(frame.outerGlow.radius, c.outerRadius, 1e-12) << c.f;
        EXPECT_EQ(frame.innerGlow.color, amber.core);
        EXPECT_NEAR(frame.innerGlow.opacity, c.innerOpacity, 1e-12) << c.f;
        EXPECT_EQ(frame.innerGlow.radius, 1);
    }
}

TEST(FlameCurves, WashDarkensBelowAndLightensAboveTheRestingFlicker) {
    const auto red = FlamePalette::red();
    const FlameFillFrame low = wash(red, 0, 0), high = wash(red, 1, 0);
    EXPECT_NEAR(low.brightness, -0.025, 1e-12);
    EXPECT_NEAR(high.brightness, 0.025, 1e-12);
    EXPECT_EQ(low.overlayOpacity, 0);
    EXPECT_NEAR(high.overlayOpacity, 0.14, 1e-12);
    EXPECT_EQ(high.overlay, red.glow);
}

TEST(FlameCurves, AnimatedFramesUseTheirOwnRiseCurve) {
    const auto amber = FlamePalette::amber();
    EXPECT_NEAR(fireTextFrame(amber, pi / (2 * 5.3)).fill[1].location, 0.55, 1e-9);
    EXPECT_NEAR(flameFillFrame(amber, pi / (2 * 4.7)).fill[1].location, 0.57, 1e-9);
    const double t = 3.21;
    EXPECT_NEAR(fireTextFrame(amber, t).brightness, 0.06 * flicker(t), 1e-12);
}

TEST(FlameCurves, StillFramesRestAtMidFlickerWithoutRise) {
    const auto red = FlamePalette::red();
    const FireTextFrame text = fireTextStillFrame(red);
    EXPECT_NEAR(text.fill[1].location, 0.45, 1e-12);
    EXPECT_NEAR(text.brightness, 0.03, 1e-12);
    EXPECT_NEAR(text.outerGlow.opacity, 0.675, 1e-12);
    EXPECT_NEAR(text.outerGlow.radius, 5.5, 1e-12);
    EXPECT_NEAR(text.innerGlow.opacity, 0.175, 1e-12);
    EXPECT_EQ(text.innerGlow.radius, 1);

    const FlameFillFrame fill = flameFillStillFrame(red);
    EXPECT_NEAR(fill.fill[1].location, 0.45, 1e-12);
    EXPECT_EQ(fill.brightness, 0);
    EXPECT_NEAR(fill.overlayOpacity, 0.07, 1e-12);
}

TEST(FlameCurves, TimeIsCountedFromTheStartOf2001) {
    const TimePoint reference = std::chrono::sys_days(std::chrono::year{2001} / 1 / 1);
    EXPECT_NEAR(timeOf(reference), 0.0, 1e-6);
    EXPECT_NEAR(timeOf(addSeconds(reference, 90.25)), 90.25, 1e-6);
    EXPECT_NEAR(frameInterval * framesPerSecond, 1.0, 1e-12);
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

TEST(ForgePalette, WorkingAmberAndTheAmberFlameShareTheEmber) {
    EXPECT_EQ(ForgeTheme::workingAmber, ForgeTheme::ember);
    EXPECT_EQ(FlamePalette::amber().mid, ForgeTheme::ember);
    EXPECT_EQ(FlamePalette::amber().glow, ForgeTheme::ember);
    EXPECT_NE(FlamePalette::red(), FlamePalette::amber());
}

} // namespace
} // namespace tovrin
