#include "support/RenderedImages.h"
#include "support/ScopedEnv.h"
#include "ui/theme/FireText.h"
#include "ui/theme/FlameFill.h"
#include "ui/theme/FlickerSchedule.h"
#include "ui/theme/ForgeTheme.h"

#include <QThread>
#include <gtest/gtest.h>

namespace tovrin {
namespace {

// Sum of alpha down the widget's left margin, where only a glow can paint.
int alphaInMargin(const QImage& image) {
    int total = 0;
    for (int y = 0; y < image.height(); ++y)
        total += qAlpha(image.pixel(FireText::glowMargin - 2, y));
    return total;
}

// A little over one frame, so that two draws fall on different flame times.
void waitAFrame() {
    QThread::msleep(90);
}

TEST(FireTextTest, FlatTextHasNoGlowAndUnderReducedMotionTheFlameStandsStillWithoutATimer) {
    test::ScopedEnv motion("TOVRIN_REDUCE_MOTION", "1");
    FireText text(QStringLiteral("TOVRIN"), ForgeStyle::engraved(22, QFont::DemiBold), 3);
    text.adjustSize();
    text.show();
    EXPECT_EQ(text.mode(), FireTextMode::flat);
    const QImage flat = test::renderOf(text);
    test::saveArtifact(flat, QStringLiteral("fire-text-flat"));
    EXPECT_EQ(alphaInMargin(flat), 0);
    EXPECT_GT(test::countNear(flat, flat.rect(), ForgeStyle::qColor(ForgeTheme::bronze), 2), 0)
        << "the letters are inked in bronze";

    text.setFlame(FlamePalette::red());
    EXPECT_EQ(text.mode(), FireTextMode::still);
    EXPECT_FALSE(FlickerSchedule::shared().isRunning());
    const QImage first = test::renderOf(text);
    waitAFrame();
    const QImage second = test::renderOf(text);
    test::saveArtifact(first, QStringLiteral("fire-text-still-red"));
    EXPECT_EQ(first, second);
    EXPECT_GT(alphaInMargin(first), 0) << "the glow reaches into the margin";
}

TEST(FireTextTest, BurningRedrawsOnTheSharedScheduleOnlyWhileShown) {
    test::ScopedEnv motion("TOVRIN_REDUCE_MOTION", "0");
    QWidget window;
    auto* text =
        new FireText(QStringLiteral("TOVRIN"), ForgeStyle::engraved(22, QFont::DemiBold), 3, &window);
    text->setFlame(FlamePalette::amber());
    text->adjustSize();
    window.adjustSize();
    EXPECT_FALSE(FlickerSchedule::shared().isRunning()) << "not yet on screen";
    window.show();
    EXPECT_TRUE(FlickerSchedule::shared().isRunning());
    EXPECT_EQ(FlickerSchedule::shared().interval(), 42);

    const QImage first = test::renderOf(*text);
    waitAFrame();
    const QImage second = test::renderOf(*text);
    test::saveArtifact(first, QStringLiteral("fire-text-burning-amber"));
    EXPECT_NE(first, second);

    window.hide();
    EXPECT_FALSE(FlickerSchedule::shared().isRunning()) << "a hidden window costs nothing";
    window.show();
    EXPECT_TRUE(FlickerSchedule::shared().isRunning());
    text->setFlame(std::nullopt);
    EXPECT_FALSE(FlickerSchedule::shared().isRunning()) << "cooled text leaves the schedule";
    text->setFlame(FlamePalette::red());
    delete text;
    EXPECT_FALSE(FlickerSchedule::shared().isRunning()) << "a destroyed widget leaves the schedule";
}

// Burning and its schedule are BurningWidget's, shared with FireText above; here, the wash itself.
TEST(FlameFillTest, PaintsNothingWithoutAFlameAStillWashUnderReducedMotionAndABurningOneOtherwise) {
    test::ScopedEnv reduced("TOVRIN_REDUCE_MOTION", "1");
    FlameFill fill;
    fill.resize(200, 40);
    fill.show();
    EXPECT_EQ(qAlpha(test::renderOf(fill).pixel(100, 20)), 0);

    fill.setFlame(FlamePalette::amber());
    const QImage still = test::renderOf(fill);
    test::saveArtifact(still, QStringLiteral("flame-fill-still-amber"));
    EXPECT_FALSE(FlickerSchedule::shared().isRunning());
    // The core at the top and the base at the bottom, under a faint glow.
    const QColor core = ForgeStyle::qColor(FlamePalette::amber().core);
    const QColor base = ForgeStyle::qColor(FlamePalette::amber().base);
    const QColor top = test::pixelAt(still, 100, 0), bottom = test::pixelAt(still, 100, 39);
    EXPECT_LT(test::colorDistance(top, core), 24);
    EXPECT_LT(test::colorDistance(top, core), test::colorDistance(top, base));
    EXPECT_LT(test::colorDistance(bottom, base), test::colorDistance(bottom, core));
    waitAFrame();
    EXPECT_EQ(test::renderOf(fill), still);

    test::ScopedEnv allowed("TOVRIN_REDUCE_MOTION", "0");
    fill.setFlame(FlamePalette::red());
    EXPECT_TRUE(FlickerSchedule::shared().isRunning());
    const QImage first = test::renderOf(fill);
    waitAFrame();
    test::saveArtifact(first, QStringLiteral("flame-fill-burning-red"));
    EXPECT_NE(test::renderOf(fill), first);
}

} // namespace
} // namespace tovrin
