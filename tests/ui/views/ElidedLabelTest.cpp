#include "ui/views/ElidedLabel.h"

#include "ui/theme/ForgeTheme.h"

#include <gtest/gtest.h>

namespace tovrin {
namespace {

TEST(ElidedLabelTest, ANarrowLabelCutsBeforeTheKeptTail) {
    const QString age = QStringLiteral(" \u00B7 19s ago");
    const QString text =
        QStringLiteral("Claude Code \u00B7 Needs permission to use Bash in the repository") + age;
    ElidedLabel label(ForgeStyle::systemFont(12), Qt::gray);
    label.resize(180, 20);

    label.setText(text);
    EXPECT_FALSE(label.shownText().endsWith(age)) << "without a kept tail the end is cut";

    label.setText(text, age.size());
    const QString shown = label.shownText();
    EXPECT_TRUE(shown.endsWith(age)) << shown.toStdString();
    EXPECT_TRUE(shown.contains(QChar(0x2026))) << shown.toStdString();

    label.resize(2000, 20);
    EXPECT_EQ(label.shownText(), text) << "what fits is shown whole";
}

} // namespace
} // namespace tovrin
