#pragma once

#include <QColor>
#include <QDir>
#include <QImage>
#include <QString>
#include <QWidget>
#include <algorithm>
#include <cstdlib>
#include <gtest/gtest.h>

namespace tovrin::test {

// Draws a widget and its children onto a transparent image, without any window background.
inline QImage renderOf(QWidget& widget) {
    QImage image(widget.size(), QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    widget.render(&image, QPoint(), QRegion(), QWidget::DrawChildren);
    return image;
}

// The pixel as a straight (not premultiplied) colour.
inline QColor pixelAt(const QImage& image, int x, int y) {
    return image.pixelColor(x, y).toRgb();
}

// How far two colours are apart, channel by channel at most, ignoring their opacity.
inline int colorDistance(const QColor& a, const QColor& b) {
    return std::max(
        {std::abs(a.red() - b.red()), std::abs(a.green() - b.green()), std::abs(a.blue() - b.blue())});
}

// Whether two colours agree to within `tolerance` in every channel, opacity included (0 to 255).
inline bool near(const QColor& actual, const QColor& expected, int tolerance = 6) {
    return colorDistance(actual, expected) <= tolerance &&
           std::abs(actual.alpha() - expected.alpha()) <= tolerance;
}

// How many pixels of `image` inside `area` are near `color`, as near() judges them.
inline int countNear(const QImage& image, const QRect& area, const QColor& color, int tolerance = 6) {
    int count = 0;
    for (int y = area.top(); y <= area.bottom(); ++y)
        for (int x = area.left(); x <= area.right(); ++x)
            count += near(pixelAt(image, x, y), color, tolerance);
    return count;
}

// Saves a picture for review beside the test build, as <name>.png; a failure to write fails the test.
inline void saveArtifact(const QImage& image, const QString& name) {
    const QString dir = QStringLiteral(TOVRIN_GUI_ARTIFACTS_DIR);
    ASSERT_TRUE(QDir().mkpath(dir)) << dir.toStdString();
    const QString file = dir + QLatin1Char('/') + name + QStringLiteral(".png");
    EXPECT_TRUE(image.save(file)) << file.toStdString();
}

} // namespace tovrin::test
