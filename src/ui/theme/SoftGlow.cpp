#include "ui/theme/SoftGlow.h"

#include <QPaintDevice>
#include <algorithm>
#include <cmath>
#include <functional>
#include <vector>

namespace tovrin::SoftGlow {

namespace {

// A shadow radius reads as about twice the blur's standard deviation.
double sigmaFor(double radius) {
    return radius / 2;
}

double pixelRatioOf(const QPainter& painter) {
    const QPaintDevice* device = painter.device();
    return device ? std::max(1.0, device->devicePixelRatioF()) : 1.0;
}

// One pass of a running-sum box blur along rows (or columns) of premultiplied pixels.
void boxPass(QImage& image, int halfWidth, bool horizontal) {
    if (halfWidth <= 0) return;
    const int width = image.width();
    const int height = image.height();
    const int lines = horizontal ? height : width;
    const int length = horizontal ? width : height;
    const int window = 2 * halfWidth + 1;
    std::vector<quint32> source(static_cast<size_t>(length));
    auto pixelAt = [&](int line, int index) -> QRgb* {
        const int x = horizontal ? index : line;
        const int y = horizontal ? line : index;
        return reinterpret_cast<QRgb*>(image.scanLine(y)) + x;
    };
    for (int line = 0; line < lines; ++line) {
        for (int index = 0; index < length; ++index)
            source[static_cast<size_t>(index)] = *pixelAt(line, index);
        int sums[4] = {0, 0, 0, 0};
        auto add = [&](int index, int sign) {
            if (index < 0 || index >= length) return;
            const quint32 pixel = source[static_cast<size_t>(index)];
            sums[0] += sign * static_cast<int>(qAlpha(pixel));
            sums[1] += sign * static_cast<int>(qRed(pixel));
            sums[2] += sign * static_cast<int>(qGreen(pixel));
            sums[3] += sign * static_cast<int>(qBlue(pixel));
        };
        for (int index = -halfWidth; index < halfWidth; ++index)
            add(index, 1);
        for (int index = 0; index < length; ++index) {
            add(index + halfWidth, 1);
            *pixelAt(line, index) =
                qRgba(sums[1] / window, sums[2] / window, sums[3] / window, sums[0] / window);
            add(index - halfWidth, -1);
        }
    }
}

void paintSilhouette(QPainter& painter, const QRectF& bounds, double radius, double opacity,
                     const std::function<void(QPainter&)>& drawShape) {
    if (opacity <= 0 || bounds.isEmpty()) return;
    const double ratio = pixelRatioOf(painter);
    const double margin = std::ceil(radius * 1.5) + 1;
    const QRectF area = bounds.adjusted(-margin, -margin, margin, margin);
    QImage canvas(static_cast<int>(std::ceil(area.width() * ratio)),
                  static_cast<int>(std::ceil(area.height() * ratio)), QImage::Format_ARGB32_Premultiplied);
    canvas.fill(Qt::transparent);
    {
        QPainter offscreen(&canvas);
        offscreen.setRenderHint(QPainter::Antialiasing);
        offscreen.setRenderHint(QPainter::SmoothPixmapTransform);
        offscreen.scale(ratio, ratio);
        offscreen.translate(-area.topLeft());
        drawShape(offscreen);
    }
    blur(canvas, sigmaFor(radius) * ratio);
    canvas.setDevicePixelRatio(ratio);
    painter.save();
    painter.setOpacity(painter.opacity() * std::clamp(opacity, 0.0, 1.0));
    painter.drawImage(area.topLeft(), canvas);
    painter.restore();
}

} // namespace

void blur(QImage& image, double sigma) {
    if (sigma <= 0 || image.isNull()) return;
    if (image.format() != QImage::Format_ARGB32_Premultiplied)
        image = image.convertToFormat(QImage::Format_ARGB32_Premultiplied);
    // Three boxes of width w have the variance of a Gaussian when w² = 12σ²/3 + 1.
    const int width = std::max(1, static_cast<int>(std::lround(std::sqrt(4 * sigma * sigma + 1))));
    const int halfWidth = std::max(1, width / 2);
    for (int pass = 0; pass < 3; ++pass) {
        boxPass(image, halfWidth, true);
        boxPass(image, halfWidth, false);
    }
}

void paint(QPainter& painter, const QPainterPath& shape, const QColor& color, double opacity, double radius) {
    paintSilhouette(painter, shape.boundingRect(), radius, opacity, [&](QPainter& offscreen) {
        offscreen.setPen(Qt::NoPen);
        offscreen.setBrush(QColor(color.red(), color.green(), color.blue()));
        offscreen.drawPath(shape);
    });
}

void paint(QPainter& painter, const QImage& image, const QRectF& target, const QColor& color, double opacity,
           double radius) {
    paintSilhouette(painter, target, radius, opacity, [&](QPainter& offscreen) {
        offscreen.drawImage(target, image);
        offscreen.setCompositionMode(QPainter::CompositionMode_SourceIn);
        offscreen.fillRect(target, QColor(color.red(), color.green(), color.blue()));
    });
}

} // namespace tovrin::SoftGlow
