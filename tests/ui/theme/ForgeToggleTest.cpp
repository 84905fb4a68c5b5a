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

TEST_F(ForgeToggleTest, ATapOnTheRowFlipsItAndLightsTheTrackWhileDisabledItIsFadedAndIgnoresTaps) {
    test::ScopedEnv motion("TOVRIN_REDUCE_MOTION", "1");
    ForgeToggle toggle(QStringLiteral("Show floating window"));
    toggle.resize(300, toggle.sizeHint().height());
    toggle.show();
    const QImage off = renderOf(toggle);
    test::click(&toggle, QPoint(10, toggle.height() / 2));
    EXPECT_TRUE(toggle.isChecked()) << "the label is part of the hit area";
    EXPECT_DOUBLE_EQ(toggle.thumbPosition(), 1) << "no travel under reduced motion";
    const QImage on = renderOf(toggle);
    test::saveArtifact(off, QStringLiteral("forge-toggle-off"));
    test::saveArtifact(on, QStringLiteral("forge-toggle-on"));
    // Off, bare track lies right of the thumb; on, the thumb sits there and lit track to its left.
    const QPoint left = trackCentre(toggle) - QPoint(13, 0), right = trackCentre(toggle) + QPoint(13, 0);
    const QColor bare = pixelAt(off, right.x(), right.y()), lit = pixelAt(on, left.x(), left.y());
    EXPECT_TRUE(near(bare, ForgeStyle::qColor(ForgeTheme::edge), 12));
    EXPECT_TRUE(near(lit, ForgeStyle::qColor(ForgeTheme::workingAmber), 12));
    EXPECT_TRUE(near(pixelAt(on, right.x(), right.y()), Qt::white, 12)) << "thumb at the on end";

    toggle.setEnabled(false);
    test::click(&toggle, trackCentre(toggle));
    EXPECT_TRUE(toggle.isChecked());
    // The track is opaque when enabled; faded, it and its glow let the window through.
    const QImage faded = renderOf(toggle);
    EXPECT_EQ(qAlpha(on.pixel(left)), 255);
    EXPECT_GT(qAlpha(faded.pixel(left)), 0) << "faded, not hidden";
    EXPECT_LT(qAlpha(faded.pixel(left)), 255);
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
