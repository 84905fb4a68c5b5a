#include "hooks/ToolIdentity.h"
#include "support/RenderedImages.h"
#include "support/ScopedEnv.h"
#include "support/TempDir.h"
#include "ui/theme/AppBrandIcon.h"
#include "ui/theme/BronzeHairline.h"
#include "ui/theme/ForgeTheme.h"
#include "ui/theme/StatusDot.h"
#include "ui/theme/Symbols.h"
#include "ui/theme/ToolBadge.h"
#include "ui/theme/ToolIcons.h"

#include <QBuffer>
#include <gtest/gtest.h>
#include <set>

namespace tovrin {
namespace {

using test::near;
using test::pixelAt;
using test::renderOf;
using test::saveArtifact;

// Space-separated, every name the views draw.
const QStringList allSymbols =
    QStringLiteral(
        "eye eye.fill eye.slash folder xmark gearshape bubble.left info.circle power chevron.up "
        "chevron.down arrow.up.right.square terminal.fill circle.hexagongrid.fill cursorarrow.rays "
        "chevron.left.forwardslash.chevron.right sparkles questionmark.circle.fill checkmark.seal.fill")
        .split(QLatin1Char(' '));

QByteArray encoded(const QColor& color, const char* format) {
    QImage image(16, 16, QImage::Format_RGB32);
    image.fill(color);
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    image.save(&buffer, format);
    return bytes;
}

TEST(SymbolsTest, EveryNameDrawsItsOwnGlyphAndUnknownNamesFallBackToTheQuestionMark) {
    QImage sheet(40 * 6, 40 * 4, QImage::Format_ARGB32_Premultiplied);
    sheet.fill(ForgeStyle::qColor(ForgeTheme::ironBottom));
    std::set<QByteArray> drawn;
    int index = 0;
    for (const QString& symbol : allSymbols) {
        const std::string name = symbol.toStdString();
        EXPECT_TRUE(Symbols::isKnown(name)) << name;
        const QImage glyph = Symbols::pixmap(name, Qt::white, 24).toImage();
        int inked = 0;
        for (int y = 0; y < 24; ++y)
            for (int x = 0; x < 24; ++x)
                inked += qAlpha(glyph.pixel(x, y)) > 128;
        EXPECT_GT(inked, 20) << name;
        EXPECT_LT(inked, 24 * 24 * 0.8) << name << " is a shape, not a blot";
        drawn.insert(QByteArray(reinterpret_cast<const char*>(glyph.constBits()), glyph.sizeInBytes()));
        QPainter painter(&sheet);
        Symbols::paint(painter, name, QRectF(8 + 40 * (index % 6), 8 + 40 * (index / 6), 24, 24),
                       ForgeStyle::qColor(ForgeTheme::bronze));
        ++index;
    }
    saveArtifact(sheet, QStringLiteral("symbols"));
    EXPECT_EQ(drawn.size(), std::size_t(allSymbols.size())) << "no two names share a glyph";
    EXPECT_FALSE(Symbols::isKnown("no.such.symbol"));
    EXPECT_EQ(Symbols::pixmap("no.such.symbol", Qt::white, 24).toImage(),
              Symbols::pixmap("questionmark.circle.fill", Qt::white, 24).toImage());
}

TEST(StatusDotTest, FillsTheDotAndGlowsOnlyWhenAsked) {
    const QColor red = ForgeStyle::qColor(ForgeTheme::waitingRed);
    StatusDot glowing(red, true);
    StatusDot plain(red, false);
    const QImage lit = renderOf(glowing);
    const QImage flat = renderOf(plain);
    saveArtifact(lit.scaled(lit.size() * 4), QStringLiteral("status-dot-glowing"));
    const int centre = lit.width() / 2;
    EXPECT_TRUE(near(pixelAt(lit, centre, centre), red));
    EXPECT_TRUE(near(pixelAt(flat, centre, centre), red));
    // Two pixels outside the dot's edge only the glow paints.
    const int outside = centre + StatusDot::diameter / 2 + 2;
    EXPECT_GT(qAlpha(lit.pixel(outside, centre)), 20);
    EXPECT_EQ(qAlpha(flat.pixel(outside, centre)), 0);
}

TEST(BronzeHairlineTest, FadesOutTowardsBothEnds) {
    BronzeHairline line;
    line.resize(200, 1);
    EXPECT_EQ(line.sizePolicy().horizontalPolicy(), QSizePolicy::Expanding);
    const QImage image = renderOf(line);
    EXPECT_LE(qAlpha(image.pixel(0, 0)), 2);
    EXPECT_GT(qAlpha(image.pixel(100, 0)), 20);
    EXPECT_LE(qAlpha(image.pixel(199, 0)), 2);
}

TEST(ToolBadgeTest, UnknownToolsGetATintedTileWithTheirSymbolAndCodexItsMark) {
    test::TempDir home;
    test::ScopedEnv homeEnv("HOME", home.path().string());
    ToolBadge unknown("mystery-agent", 44);
    ToolBadge codex("codex-cli", 44);
    const QImage tile = renderOf(unknown);
    const QImage marked = renderOf(codex);
    saveArtifact(tile, QStringLiteral("tool-badge-unknown"));
    saveArtifact(marked, QStringLiteral("tool-badge-codex"));
    EXPECT_EQ(tile.size(), QSize(44, 44));
    // Inside the top edge's middle lies the tool's tint; the corners are cut round.
    EXPECT_TRUE(near(pixelAt(tile, 22, 2), ForgeStyle::qColor(ToolIdentity::named("mystery-agent").tint)));
    EXPECT_EQ(qAlpha(tile.pixel(0, 0)), 0);
    EXPECT_TRUE(near(pixelAt(marked, 22, 2), ForgeStyle::qColor(ToolIdentity::named("codex-cli").tint)));
    EXPECT_EQ(unknown.accessibleName(), QStringLiteral("mystery-agent"));
    EXPECT_EQ(codex.accessibleName(), QStringLiteral("Codex"));
    EXPECT_GT(test::countNear(marked, QRect(10, 10, 24, 24), Qt::white, 10), 40)
        << "the mark is drawn in white";
}

TEST(ToolBadgeTest, AUserOverrideWinsAndAFileThatDoesNotLoadIsPassedOver) {
    test::TempDir home;
    test::ScopedEnv homeEnv("HOME", home.path().string());
    home.write(".tovrin/icons/override-probe.png", encoded(Qt::magenta, "PNG").toStdString());
    home.write(".tovrin/icons/override-probe.jpg", encoded(Qt::green, "JPG").toStdString());
    home.write(".tovrin/icons/broken-probe.png", "not a picture");
    home.write(".tovrin/icons/broken-probe.svg", "nor this");
    home.write(".tovrin/icons/broken-probe.jpg", encoded(Qt::cyan, "JPG").toStdString());

    ToolBadge overridden("override-probe", 22);
    ToolBadge fallen("broken-probe", 22);
    EXPECT_TRUE(near(pixelAt(renderOf(overridden), 11, 11), Qt::magenta));
    EXPECT_TRUE(near(pixelAt(renderOf(fallen), 11, 11), Qt::cyan, 12));
    EXPECT_FALSE(AppIconProvider::userOverride("no-file-for-this"));
}

TEST(ToolBadgeTest, AMissIsNotCachedSoAnIconDroppedInLaterIsFound) {
    test::TempDir home;
    test::ScopedEnv homeEnv("HOME", home.path().string());
    EXPECT_FALSE(AppIconProvider::icon("late-probe"));
    home.write(".tovrin/icons/late-probe.png", encoded(Qt::yellow, "PNG").toStdString());
    ASSERT_TRUE(AppIconProvider::icon("late-probe"));
    std::filesystem::remove(home.path() / ".tovrin/icons/late-probe.png");
    EXPECT_TRUE(AppIconProvider::icon("late-probe")) << "a hit is kept for the run";
}

TEST(ToolBadgeTest, AnInstalledApplicationLendsItsIconThroughItsDesktopFile) {
    test::TempDir data;
    test::ScopedEnv dataHome("XDG_DATA_HOME", data.path().string());
    const auto picture = data.write("pictures/cursor.png", encoded(Qt::blue, "PNG").toStdString());
    data.write("applications/cursor.desktop",
               "[Desktop Entry]\nName=Editor\nIcon=" + picture.string() + "\n");
    const auto icon = AppIconProvider::installedAppIcon("cursor-ide");
    ASSERT_TRUE(icon);
    EXPECT_TRUE(near(icon->toImage().pixelColor(4, 4), Qt::blue));
    EXPECT_TRUE(AppIconProvider::installedAppIcon("cursor-cli"))
        << "the command line borrows the editor's icon";
    EXPECT_FALSE(AppIconProvider::installedAppIcon("codex-cli")) << "not an installed application";
}

TEST(AppBrandIconTest, IsFoundOnceAndHasPixels) {
    const QPixmap& icon = AppBrandIcon::image();
    ASSERT_FALSE(icon.isNull());
    saveArtifact(icon.toImage(), QStringLiteral("app-brand-icon"));
    EXPECT_GT(qAlpha(icon.toImage().pixel(icon.width() / 2, icon.height() / 2)), 200);
}

} // namespace
} // namespace tovrin
