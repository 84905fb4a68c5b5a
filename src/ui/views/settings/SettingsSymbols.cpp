#include "ui/views/settings/SettingsSymbols.h"

#include "ui/theme/Symbols.h"

#include <QPainter>
#include <QPainterPath>
#include <QPainterPathStroker>
#include <cmath>
#include <functional>
#include <map>
#include <string>

namespace tovrin::SettingsSymbols {

namespace {

// Drawn in the theme's 24-unit square with the theme's line width, so they sit beside its glyphs.
constexpr double designSide = 24.0;
constexpr double lineWidth = 2.0;

QPainterPath stroked(const QPainterPath& centreLine, double width = lineWidth) {
    QPainterPathStroker stroker;
    stroker.setWidth(width);
    stroker.setCapStyle(Qt::RoundCap);
    stroker.setJoinStyle(Qt::RoundJoin);
    return stroker.createStroke(centreLine).simplified();
}

QPainterPath bell() {
    QPainterPath body;
    body.moveTo(4, 18);
    body.lineTo(6, 15.5);
    body.lineTo(6, 11);
    body.cubicTo(6, 7, 8.5, 4.5, 12, 4.5);
    body.cubicTo(15.5, 4.5, 18, 7, 18, 11);
    body.lineTo(18, 15.5);
    body.lineTo(20, 18);
    body.closeSubpath();
    QPainterPath clapper;
    clapper.moveTo(10, 20.5);
    clapper.quadTo(12, 22.5, 14, 20.5);
    QPainterPath knob;
    knob.moveTo(12, 2.5);
    knob.lineTo(12, 4.5);
    return stroked(body).united(stroked(clapper)).united(stroked(knob));
}

// One arc of a radio wave around the mast's top, spanning `sweep` degrees each side of `facing`.
QPainterPath wave(double radius, double facing) {
    constexpr double sweep = 40;
    QPainterPath arc;
    const QRectF box(12 - radius, 9 - radius, 2 * radius, 2 * radius);
    arc.arcMoveTo(box, facing - sweep);
    arc.arcTo(box, facing - sweep, 2 * sweep);
    return stroked(arc);
}

QPainterPath antennaWaves() {
    QPainterPath mast;
    mast.moveTo(12, 11);
    mast.lineTo(12, 21);
    QPainterPath glyph = stroked(mast);
    QPainterPath top;
    top.addEllipse(QPointF(12, 9), 2.2, 2.2);
    glyph = glyph.united(top);
    for (const double radius : {5.0, 9.0}) {
        glyph = glyph.united(wave(radius, 0)).united(wave(radius, 180));
    }
    return glyph;
}

QPainterPath window() {
    QPainterPath frame;
    frame.addRoundedRect(QRectF(3, 4.5, 18, 15), 2.5, 2.5);
    QPainterPath bar;
    bar.addRoundedRect(QRectF(3, 4.5, 18, 4.5), 2.5, 2.5);
    bar.addRect(QRectF(3, 7, 18, 2));
    QPainterPath glyph = stroked(frame).united(bar.simplified());
    // The window's three buttons, cut out of its title bar.
    for (const double x : {5.8, 8.3, 10.8}) {
        QPainterPath dot;
        dot.addEllipse(QPointF(x, 6.9), 0.8, 0.8);
        glyph = glyph.subtracted(dot);
    }
    return glyph;
}

QPainterPath wrenchAndScrewdriver() {
    // The screwdriver: a fat handle at the lower right, a thin shaft to the upper left.
    QPainterPath handle;
    handle.moveTo(15.5, 15.5);
    handle.lineTo(19.5, 19.5);
    QPainterPath shaft;
    shaft.moveTo(15.5, 15.5);
    shaft.lineTo(5, 5);
    QPainterPath glyph = stroked(handle, 4.2).united(stroked(shaft, 1.6));
    // The wrench across it: a shank from the lower left to an open ring at the upper right.
    QPainterPath shank;
    shank.moveTo(5, 19);
    shank.lineTo(13.5, 10.5);
    QPainterPath ring;
    ring.addEllipse(QPointF(16, 8), 4, 4);
    QPainterPath jaw;
    jaw.addEllipse(QPointF(16, 8), 1.8, 1.8);
    QPainterPath mouth;
    mouth.moveTo(16, 8);
    mouth.lineTo(20.5, 3.5);
    const QPainterPath head = ring.subtracted(jaw).subtracted(stroked(mouth, 3.2));
    return glyph.united(stroked(shank, 2.6)).united(head);
}

const QPainterPath* ownPath(std::string_view name) {
    static const std::map<std::string, std::function<QPainterPath()>, std::less<>> builders{
        {"bell", bell},
        {"antenna.radiowaves.left.and.right", antennaWaves},
        {"macwindow", window},
        {"wrench.and.screwdriver", wrenchAndScrewdriver},
    };
    static std::map<std::string, QPainterPath, std::less<>> built;
    const auto builder = builders.find(name);
    if (builder == builders.end()) return nullptr;
    auto found = built.find(name);
    if (found == built.end()) found = built.emplace(builder->first, builder->second()).first;
    return &found->second;
}

} // namespace

QPixmap pixmap(std::string_view name, const QColor& color, double side, double devicePixelRatio) {
    const QPainterPath* own = ownPath(name);
    if (own == nullptr) return Symbols::pixmap(name, color, side, devicePixelRatio);
    const int pixels = std::max(1, static_cast<int>(std::ceil(side * devicePixelRatio)));
    QPixmap image(pixels, pixels);
    image.setDevicePixelRatio(devicePixelRatio);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(color);
    painter.scale(side / designSide, side / designSide);
    painter.drawPath(*own);
    return image;
}

} // namespace tovrin::SettingsSymbols
