#include "ui/theme/SymbolPaths.h"

#include <QPolygonF>
#include <QRectF>

// The settings window's glyphs: its sidebar's categories and the marks before its captions.
namespace tovrin::SymbolPaths {

namespace {

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
    return stroked(body).united(stroked(clapper)).united(stroked(polyline({{12, 2.5}, {12, 4.5}})));
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
    QPainterPath glyph = stroked(polyline({{12, 11}, {12, 21}})).united(circle({12, 9}, 2.2));
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
        glyph = glyph.subtracted(circle({x, 6.9}, 0.8));
    }
    return glyph;
}

QPainterPath wrenchAndScrewdriver() {
    // The screwdriver: a fat handle at the lower right, a thin shaft to the upper left.
    QPainterPath glyph = stroked(polyline({{15.5, 15.5}, {19.5, 19.5}}), 4.2)
                             .united(stroked(polyline({{15.5, 15.5}, {5, 5}}), 1.6));
    // The wrench across it: a shank from the lower left to an open ring at the upper right.
    const QPainterPath head = circle({16, 8}, 4)
                                  .subtracted(circle({16, 8}, 1.8))
                                  .subtracted(stroked(polyline({{16, 8}, {20.5, 3.5}}), 3.2));
    return glyph.united(stroked(polyline({{5, 19}, {13.5, 10.5}}), 2.6)).united(head);
}

QPainterPath triangleOutline() {
    QPainterPath outline;
    outline.addPolygon(QPolygonF({{12, 3.5}, {21.5, 20}, {2.5, 20}, {12, 3.5}}));
    return outline;
}

QPainterPath exclamationMark() {
    return stroked(polyline({{12, 9.2}, {12, 13.6}}), 2.4).united(circle({12, 16.8}, 1.35));
}

QPainterPath warningFilled() {
    // The outline stroked wide rounds the triangle's corners.
    return triangleOutline().united(stroked(triangleOutline(), 3)).subtracted(exclamationMark());
}

QPainterPath warningOutlined() {
    return stroked(triangleOutline()).united(exclamationMark());
}

QPainterPath raisedHand() {
    QPainterPath silhouette;
    silhouette.addRoundedRect(QRectF(7, 10.5, 11, 11), 4.5, 4.5);
    const auto finger = [](double x, double top, double bottom) {
        return stroked(polyline({{x, bottom}, {x, top}}), 2.6);
    };
    silhouette = silhouette.united(finger(8.5, 5.5, 12)).united(finger(11.5, 3.5, 12));
    silhouette = silhouette.united(finger(14.5, 4, 12)).united(finger(17.5, 6.5, 13));
    silhouette = silhouette.united(stroked(polyline({{8.5, 17}, {4.5, 12.5}}), 2.8));
    return stroked(silhouette, 1.5);
}

} // namespace

std::span<const NamedPath> settingsPaths() {
    static constexpr NamedPath paths[]{
        {"bell", bell},
        {"antenna.radiowaves.left.and.right", antennaWaves},
        {"macwindow", window},
        {"wrench.and.screwdriver", wrenchAndScrewdriver},
        {"exclamationmark.triangle.fill", warningFilled},
        {"exclamationmark.triangle", warningOutlined},
        {"hand.raised", raisedHand},
    };
    return paths;
}

} // namespace tovrin::SymbolPaths
