#include "ui/views/TrayIcon.h"

#include "support/RenderedImages.h"
#include "support/TrayModelFixture.h"
#include "ui/theme/ForgeTheme.h"

#include <QIcon>
#include <QImage>
#include <gtest/gtest.h>

namespace tovrin {
namespace {

using enum SessionState;

// Only the colour's opaque pixels count.
int countNear(const QImage& image, const QRect& area, const QColor& color) {
    return test::countNear(image, area, color, 40);
}

TEST(TrayIconTest, EachRollUpHasItsGlyphColourAtEverySizeAndOnlyWaitingShowsItsCountAsABadge) {
    for (const AggregateStatus& status :
         {AggregateStatus::waiting(7), AggregateStatus::working(), AggregateStatus::neutral()}) {
        const TrayIconLook look = TrayIconLook::of(status);
        SCOPED_TRACE(look.symbol);
        const QIcon icon = TrayIcon::icon(look);
        for (const int side : TrayIcon::sides)
            EXPECT_TRUE(icon.availableSizes().contains(QSize(side, side))) << side;

        for (const int side : {22, 48}) {
            const QImage image = TrayIcon::pixmap(look, side).toImage();
            ASSERT_EQ(image.size(), QSize(side, side));
            // The glyph is drawn in its colour, over a transparent ground.
            EXPECT_GT(countNear(image, QRect(0, 0, side, side * 6 / 11), ForgeStyle::qColor(look.color)), 12);
            EXPECT_EQ(image.pixelColor(0, 0).alpha(), 0);
            // The waiting count is a badge in the lower right corner, written in white.
            const QRect corner(side / 2, side / 2, side / 2, side / 2);
            if (look.count) {
                EXPECT_GT(countNear(image, corner, ForgeStyle::qColor(TrayIconColors::red)),
                          side * side / 20);
                EXPECT_GT(countNear(image, corner, Qt::white), side / 6);
            } else {
                EXPECT_EQ(countNear(image, corner, Qt::white), 0);
            }
        }
    }
    // A long count stays inside the icon.
    const QImage many = TrayIcon::pixmap(TrayIconLook::of(AggregateStatus::waiting(128)), 22).toImage();
    EXPECT_GT(countNear(many, QRect(0, 11, 22, 11), Qt::white), 3);
}

TEST(TrayIconTest, RedrawsOnlyWhenTheRollUpChanges) {
    test::TrayModelFixture fixture;
    std::vector<QString> toolTips;
    TrayIcon icon(fixture.model, [&](const QIcon&, const QString& toolTip) { toolTips.push_back(toolTip); });
    ASSERT_EQ(toolTips.size(), 1u);
    EXPECT_EQ(icon.look().symbol, "eye.slash");

    fixture.publish({fixture.make("codex-cli", "a", working)});
    fixture.publish({fixture.make("codex-cli", "a", working), fixture.make("claude-code", "b", idle)});
    EXPECT_EQ(toolTips.size(), 2u);
    EXPECT_EQ(icon.look().symbol, "eye");

    fixture.publish({fixture.make("codex-cli", "a", waiting), fixture.make("claude-code", "b", waiting)});
    EXPECT_EQ(toolTips.size(), 3u);
    EXPECT_EQ(icon.look().count, std::optional<std::string>("2"));
    fixture.publish({fixture.make("codex-cli", "a", waiting)});
    EXPECT_EQ(toolTips.size(), 4u);
    EXPECT_EQ(toolTips.back(), QStringLiteral("Tovrin \u2014 1 waiting"));
}

} // namespace
} // namespace tovrin
