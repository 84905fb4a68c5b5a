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
    const QColor bronze = ForgeStyle::qColor(ForgeTheme::bronze, 0.26);
    EXPECT_NEAR(bronze.redF(), 0.788, 1e-3);
    EXPECT_NEAR(bronze.greenF(), 0.635, 1e-3);
    EXPECT_NEAR(bronze.alphaF(), 0.26, 1e-3);
}

} // namespace
} // namespace tovrin
