#pragma once

#include <QImage>
#include <QPainter>
#include <QSvgRenderer>
#include <optional>

namespace tovrin {

// An SVG document drawn into a transparent square image; nothing when it does not parse.
inline std::optional<QImage> renderSvg(QSvgRenderer& renderer, int side) {
    if (!renderer.isValid()) return std::nullopt;
    QImage picture(side, side, QImage::Format_ARGB32_Premultiplied);
    picture.fill(Qt::transparent);
    QPainter painter(&picture);
    painter.setRenderHint(QPainter::Antialiasing);
    renderer.render(&painter, QRectF(0, 0, side, side));
    painter.end();
    return picture;
}

} // namespace tovrin
