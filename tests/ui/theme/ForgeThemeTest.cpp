#include "ui/theme/ForgeTheme.h"

#include <QFontDatabase>
#include <gtest/gtest.h>

namespace tovrin {
namespace {

TEST(ForgeThemeTest, EngravedFallsBackToASerifFaceOfTheSameSizeAndWeight) {
    const QFont font = ForgeStyle::engraved(14, QFont::DemiBold);
    EXPECT_EQ(font.pixelSize(), 14);
    EXPECT_EQ(font.weight(), QFont::DemiBold);
    if (QFontDatabase::families().contains(QStringLiteral("Cinzel"))) {
        EXPECT_EQ(font.family(), QStringLiteral("Cinzel"));
    } else {
        EXPECT_EQ(font.styleHint(), QFont::Serif);
        EXPECT_NE(font.family(), QStringLiteral("Cinzel"));
    }
}

TEST(ForgeThemeTest, ColoursKeepTheirChannelsAndTakeAnOpacity) {
    const Color bronze = ForgeTheme::bronze;
    const QColor faint = ForgeStyle::qColor(bronze, 0.26);
    EXPECT_NEAR(faint.redF(), bronze.red, 1e-3);
    EXPECT_NEAR(faint.greenF(), bronze.green, 1e-3);
    EXPECT_NEAR(faint.blueF(), bronze.blue, 1e-3);
    EXPECT_NEAR(faint.alphaF(), bronze.alpha * 0.26, 1e-3);
}

} // namespace
} // namespace tovrin
