#include "ui/theme/SymbolPaths.h"

#include <QRectF>
#include <cmath>
#include <numbers>

// The glyphs that stand for the watched agents' tools.
namespace tovrin::SymbolPaths {

namespace {

QPainterPath terminalFill() {
    QPainterPath screen;
    screen.addRoundedRect(QRectF(2, 4, 20, 16), 3.5, 3.5);
    const QPainterPath prompt = stroked(polyline({{6.5, 9}, {10, 12}, {6.5, 15}}), 2.1)
                                    .united(stroked(polyline({{12, 15.5}, {17, 15.5}}), 2.1));
    return screen.subtracted(prompt);
}

QPainterPath hexagon(QPointF centre, double radius) {
    QPainterPath shape;
    for (int corner = 0; corner < 6; ++corner) {
        const double angle = std::numbers::pi / 3 * corner;
        const QPointF point(centre.x() + radius * std::cos(angle), centre.y() + radius * std::sin(angle));
        if (corner == 0)
            shape.moveTo(point);
        else
            shape.lineTo(point);
    }
    shape.closeSubpath();
    return shape;
}

QPainterPath circleHexagongridFill() {
    QPainterPath disc = circle({12, 12}, 10);
    const double step = 4.6;
    disc = disc.subtracted(hexagon({12, 12}, 1.9));
    for (int around = 0; around < 6; ++around) {
        const double angle = std::numbers::pi / 3 * around + std::numbers::pi / 6;
        disc = disc.subtracted(hexagon({12 + step * std::cos(angle), 12 + step * std::sin(angle)}, 1.9));
    }
    return disc;
}

QPainterPath cursorarrowRays() {
    QPainterPath arrow;
    arrow.moveTo(10, 10);
    arrow.lineTo(20.5, 14);
    arrow.lineTo(15.6, 15.6);
    arrow.lineTo(14, 20.5);
    arrow.closeSubpath();
    QPainterPath rays;
    rays.addPath(polyline({{7, 2.5}, {7, 5}}));
    rays.addPath(polyline({{2.5, 7}, {5, 7}}));
    rays.addPath(polyline({{3.8, 3.8}, {5.4, 5.4}}));
    rays.addPath(polyline({{10.2, 3.8}, {8.8, 5.2}}));
    rays.addPath(polyline({{3.8, 10.2}, {5.2, 8.8}}));
    return stroked(arrow, 1.6).united(arrow).united(stroked(rays, 1.8));
}

QPainterPath codeBrackets() {
    return stroked(polyline({{7.5, 7}, {2.5, 12}, {7.5, 17}}), 2.2)
        .united(stroked(polyline({{16.5, 7}, {21.5, 12}, {16.5, 17}}), 2.2))
        .united(stroked(polyline({{13.6, 5}, {10.4, 19}}), 2.2));
}

QPainterPath sparkle(QPointF centre, double radius) {
    // Four concave sides: the points are joined through control points close to the centre.
    const double pinch = radius * 0.18;
    QPainterPath star;
    star.moveTo(centre.x(), centre.y() - radius);
    star.quadTo(centre.x() + pinch, centre.y() - pinch, centre.x() + radius, centre.y());
    star.quadTo(centre.x() + pinch, centre.y() + pinch, centre.x(), centre.y() + radius);
    star.quadTo(centre.x() - pinch, centre.y() + pinch, centre.x() - radius, centre.y());
    star.quadTo(centre.x() - pinch, centre.y() - pinch, centre.x(), centre.y() - radius);
    star.closeSubpath();
    return star;
}

QPainterPath sparkles() {
    return sparkle({10, 13.5}, 8.5).united(sparkle({18.5, 5.5}, 3.8)).united(sparkle({19, 18.5}, 2.6));
}

} // namespace

std::span<const NamedPath> toolPaths() {
    static constexpr NamedPath paths[]{
        {"terminal.fill", terminalFill},
        {"circle.hexagongrid.fill", circleHexagongridFill},
        {"cursorarrow.rays", cursorarrowRays},
        {"chevron.left.forwardslash.chevron.right", codeBrackets},
        {"sparkles", sparkles},
    };
    return paths;
}

} // namespace tovrin::SymbolPaths
