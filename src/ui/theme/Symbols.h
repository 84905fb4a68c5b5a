#pragma once

#include <QColor>
#include <QPainter>
#include <QPainterPath>
#include <QPixmap>
#include <QRectF>
#include <string_view>

namespace tovrin::Symbols {

// The outline of a glyph in a 24 by 24 design square; an unknown name gives "questionmark.circle.fill".
const QPainterPath& path(std::string_view name);
bool isKnown(std::string_view name);

// Draws the glyph centred in the box, as large as its shorter side allows.
void paint(QPainter& painter, std::string_view name, const QRectF& box, const QColor& color);
QPixmap pixmap(std::string_view name, const QColor& color, double side, double devicePixelRatio = 1);

} // namespace tovrin::Symbols
