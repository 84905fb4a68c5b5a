#include "ui/theme/ForgeToggle.h"

#include "support/QtEventLoopTest.h"
#include "support/RenderedImages.h"
#include "support/ScopedEnv.h"
#include "support/WidgetInput.h"
#include "ui/theme/ForgeTheme.h"

#include <gtest/gtest.h>

namespace tovrin {
namespace {

using test::near;
using test::pixelAt;
using test::renderOf;

using namespace std::chrono_literals;

// Runs the event loop for a while, as the thumb's animation needs.
class ForgeToggleTest : public test::QtEventLoopTest {};

QPoint trackCentre(const ForgeToggle& toggle) {
    return QPoint(toggle.width() - 4 - ForgeToggle::trackWidth / 2, toggle.height() / 2);
}

TEST_F(ForgeToggleTest, ATapAnywhereOnTheRowFlipsItAndTheTrackTakesTheStateColour) {
    test::ScopedEnv motion("TOVRIN_REDUCE_MOTION", "1");
    ForgeToggle toggle(QStringLiteral("Show floating window"));
    toggle.resize(300, toggle.sizeHint().height());
    toggle.show();
    const QImage off = renderOf(toggle);
    // Left of the thumb's off position lies bare track.
    const QPoint trackRight = trackCentre(toggle) + QPoint(13, 0);
    EXPECT_TRUE(near(pixelAt(off, trackRight.x(), trackRight.y()), ForgeStyle::qColor(ForgeTheme::edge), 12));

    test::click(&toggle, QPoint(10, toggle.height() / 2));
    EXPECT_TRUE(toggle.isChecked()) << "the label is part of the hit area";
    EXPECT_DOUBLE_EQ(toggle.thumbPosition(), 1) << "no travel under reduced motion";
    const QImage on = renderOf(toggle);
    test::saveArtifact(off, QStringLiteral("forge-toggle-off"));
    test::saveArtifact(on, QStringLiteral("forge-toggle-on"));
    const QPoint trackLeft = trackCentre(toggle) - QPoint(13, 0);
    EXPECT_TRUE(
        near(pixelAt(on, trackLeft.x(), trackLeft.y()), ForgeStyle::qColor(ForgeTheme::workingAmber), 12));
    EXPECT_TRUE(near(pixelAt(on, trackRight.x(), trackRight.y()), Qt::white, 12)) << "thumb at the on end";
}

TEST_F(ForgeToggleTest, DisabledIsFadedAndIgnoresTaps) {
    test::ScopedEnv motion("TOVRIN_REDUCE_MOTION", "1");
    ForgeToggle toggle(QStringLiteral("Launch at login"));
    toggle.setChecked(true);
    toggle.setEnabled(false);
    toggle.resize(300, toggle.sizeHint().height());
    toggle.show();
    test::click(&toggle, trackCentre(toggle));
    EXPECT_TRUE(toggle.isChecked());
    const QImage faded = renderOf(toggle);
    toggle.setEnabled(true);
    const QImage lit = renderOf(toggle);
    // The track is opaque when enabled; faded, it and its glow let the window through.
    const QPoint trackLeft = trackCentre(toggle) - QPoint(13, 0);
    EXPECT_EQ(qAlpha(lit.pixel(trackLeft)), 255);
    EXPECT_GT(qAlpha(faded.pixel(trackLeft)), 0) << "faded, not hidden";
    EXPECT_LT(qAlpha(faded.pixel(trackLeft)), 255);
}

TEST_F(ForgeToggleTest, TheThumbTravelsAndSettlesWhenMotionIsAllowed) {
    test::ScopedEnv motion("TOVRIN_REDUCE_MOTION", "0");
    ForgeToggle toggle(QStringLiteral("Sound"));
    toggle.resize(200, toggle.sizeHint().height());
    toggle.show();
    toggle.setChecked(true);
    pumpFor(60ms);
    EXPECT_GT(toggle.thumbPosition(), 0);
    pumpFor(400ms);
    EXPECT_DOUBLE_EQ(toggle.thumbPosition(), 1);
}

} // namespace
} // namespace tovrin
