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

// Pixels of `image` inside `area` that are nearly opaque and near `color`.
int countNear(const QImage& image, const QRect& area, const QColor& color) {
    int n = 0;
    for (int y = area.top(); y <= area.bottom(); ++y) {
        for (int x = area.left(); x <= area.right(); ++x) {
            const QColor c = image.pixelColor(x, y);
            if (c.alpha() > 200 && test::colorDistance(c, color) < 40) ++n;
        }
    }
    return n;
}

TEST(TrayIconTest, EachRollUpHasItsGlyphColourAndEverySize) {
    const TrayIconLook looks[] = {TrayIconLook::of(AggregateStatus::waiting(3)),
                                  TrayIconLook::of(AggregateStatus::working()),
                                  TrayIconLook::of(AggregateStatus::neutral())};
    for (const TrayIconLook& look : looks) {
        const QIcon icon = TrayIcon::icon(look);
        for (const int side : TrayIcon::sides)
            EXPECT_TRUE(icon.availableSizes().contains(QSize(side, side))) << look.symbol << " " << side;

        const QImage image = TrayIcon::pixmap(look, 22).toImage();
        ASSERT_EQ(image.size(), QSize(22, 22));
        const QColor color = ForgeStyle::qColor(look.color);
        // The glyph is drawn in its colour, over a transparent ground.
        EXPECT_GT(countNear(image, QRect(0, 0, 22, 12), color), 12) << look.symbol;
        EXPECT_EQ(image.pixelColor(0, 0).alpha(), 0) << look.symbol;
    }
}

TEST(TrayIconTest, TheWaitingCountIsABadgeInTheLowerRightCorner) {
    for (const int side : {22, 48}) {
        const QImage waiting =
            TrayIcon::pixmap(TrayIconLook::of(AggregateStatus::waiting(7)), side).toImage();
        const QRect corner(side / 2, side / 2, side / 2, side / 2);
        EXPECT_GT(countNear(waiting, corner, ForgeStyle::qColor(TrayIconColors::red)), side * side / 20);
        EXPECT_GT(countNear(waiting, corner, Qt::white), side / 6) << "the count is written in white";

        const QImage working = TrayIcon::pixmap(TrayIconLook::of(AggregateStatus::working()), side).toImage();
        EXPECT_EQ(countNear(working, corner, Qt::white), 0);
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
