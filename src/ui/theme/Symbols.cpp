#include "ui/theme/Symbols.h"

#include <QPainterPathStroker>
#include <QTransform>
#include <cmath>
#include <functional>
#include <map>
#include <numbers>
#include <string>

namespace tovrin::Symbols {

namespace {

// Glyphs are drawn as filled outlines so that one fill paints every symbol at any size; strokes
// are turned into outlines with this width (in the 24-unit design square).
constexpr double lineWidth = 2.0;
constexpr double designSide = 24.0;

QPainterPath stroked(const QPainterPath& centreLine, double width = lineWidth) {
    QPainterPathStroker stroker;
    stroker.setWidth(width);
    stroker.setCapStyle(Qt::RoundCap);
    stroker.setJoinStyle(Qt::RoundJoin);
    return stroker.createStroke(centreLine).simplified();
}

QPainterPath polyline(std::initializer_list<QPointF> points) {
    QPainterPath line;
    bool first = true;
    for (const QPointF& point : points) {
        if (first)
            line.moveTo(point);
        else
            line.lineTo(point);
        first = false;
    }
    return line;
}

QPainterPath circle(QPointF centre, double radius) {
    QPainterPath shape;
    shape.addEllipse(centre, radius, radius);
    return shape;
}

QPainterPath almond() {
    QPainterPath shape;
    shape.moveTo(2, 12);
    shape.cubicTo(6, 5, 18, 5, 22, 12);
    shape.cubicTo(18, 19, 6, 19, 2, 12);
    shape.closeSubpath();
    return shape;
}

QPainterPath eye() {
    return stroked(almond()).united(circle({12, 12}, 3.2));
}

QPainterPath eyeFill() {
    return almond().subtracted(circle({12, 12}, 4.8)).united(circle({12, 12}, 3.3));
}

QPainterPath eyeSlash() {
    const QPainterPath slash = polyline({{4, 3}, {20, 21}});
    // A gap either side of the slash keeps it readable at menu sizes.
    const QPainterPath gap = stroked(slash, lineWidth * 2.6);
    return eye().subtracted(gap).united(stroked(slash));
}

QPainterPath folder() {
    QPainterPath outline;
    outline.moveTo(3, 7);
    outline.lineTo(3, 18);
    outline.quadTo(3, 20, 5, 20);
    outline.lineTo(19, 20);
    outline.quadTo(21, 20, 21, 18);
    outline.lineTo(21, 9.5);
    outline.quadTo(21, 7.5, 19, 7.5);
    outline.lineTo(11.5, 7.5);
    outline.lineTo(9.5, 5);
    outline.lineTo(5, 5);
    outline.quadTo(3, 5, 3, 7);
    outline.closeSubpath();
    return stroked(outline).united(stroked(polyline({{3, 10.5}, {21, 10.5}})));
}

QPainterPath xmark() {
    return stroked(polyline({{6, 6}, {18, 18}}), 2.4).united(stroked(polyline({{18, 6}, {6, 18}}), 2.4));
}

QPainterPath gearshape() {
    QPainterPath gear = circle({12, 12}, 7.2);
    constexpr int teeth = 8;
    for (int tooth = 0; tooth < teeth; ++tooth) {
        QPainterPath cog;
        cog.addRoundedRect(QRectF(10.3, 1.8, 3.4, 5), 0.8, 0.8);
        QTransform turn;
        turn.translate(12, 12);
        turn.rotate(360.0 * tooth / teeth);
        turn.translate(-12, -12);
        gear = gear.united(turn.map(cog));
    }
    return gear.subtracted(circle({12, 12}, 3.3));
}

QPainterPath bubbleLeft() {
    QPainterPath outline;
    outline.moveTo(7, 4);
    outline.lineTo(17, 4);
    outline.quadTo(21, 4, 21, 8);
    outline.lineTo(21, 13);
    outline.quadTo(21, 17, 17, 17);
    outline.lineTo(10, 17);
    outline.lineTo(5, 21);
    outline.lineTo(6, 16.6);
    outline.quadTo(3, 15.8, 3, 13);
    outline.lineTo(3, 8);
    outline.quadTo(3, 4, 7, 4);
    outline.closeSubpath();
    return stroked(outline);
}

QPainterPath infoCircle() {
    return stroked(circle({12, 12}, 9.2))
        .united(circle({12, 7.6}, 1.4))
        .united(stroked(polyline({{12, 11}, {12, 17}}), 2.2));
}

QPainterPath power() {
    QPainterPath arc;
    // Open at the top, where the stem stands.
    arc.arcMoveTo(QRectF(4, 4.5, 16, 16), 125);
    arc.arcTo(QRectF(4, 4.5, 16, 16), 125, 290);
    return stroked(arc, 2.2).united(stroked(polyline({{12, 2.5}, {12, 11}}), 2.2));
}

QPainterPath chevronUp() {
    return stroked(polyline({{5, 15.5}, {12, 8.5}, {19, 15.5}}), 2.4);
}

QPainterPath chevronDown() {
    return stroked(polyline({{5, 8.5}, {12, 15.5}, {19, 8.5}}), 2.4);
}

QPainterPath arrowUpRightSquare() {
    QPainterPath square;
    square.addRoundedRect(QRectF(3.5, 3.5, 17, 17), 3.5, 3.5);
    return stroked(square)
        .united(stroked(polyline({{9, 15}, {15.5, 8.5}})))
        .united(stroked(polyline({{10.5, 8.5}, {15.5, 8.5}, {15.5, 13.5}})));
}

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

QPainterPath questionmarkCircleFill() {
    QPainterPath hook;
    hook.moveTo(9, 9.6);
    hook.cubicTo(9, 5.6, 15.2, 5.6, 15.2, 9.4);
    hook.cubicTo(15.2, 11.8, 12, 12, 12, 14.2);
    const QPainterPath mark = stroked(hook, 2.3).united(circle({12, 17.6}, 1.4));
    return circle({12, 12}, 10).subtracted(mark);
}

using Builder = std::function<QPainterPath()>;

const std::map<std::string, Builder, std::less<>>& builders() {
    static const std::map<std::string, Builder, std::less<>> table{
        {"eye", eye},
        {"eye.fill", eyeFill},
        {"eye.slash", eyeSlash},
        {"folder", folder},
        {"xmark", xmark},
        {"gearshape", gearshape},
        {"bubble.left", bubbleLeft},
        {"info.circle", infoCircle},
        {"power", power},
        {"chevron.up", chevronUp},
        {"chevron.down", chevronDown},
        {"arrow.up.right.square", arrowUpRightSquare},
        {"terminal.fill", terminalFill},
        {"circle.hexagongrid.fill", circleHexagongridFill},
        {"cursorarrow.rays", cursorarrowRays},
        {"chevron.left.forwardslash.chevron.right", codeBrackets},
        {"sparkles", sparkles},
        {"questionmark.circle.fill", questionmarkCircleFill},
    };
    return table;
}

} // namespace

bool isKnown(std::string_view name) {
    return builders().find(name) != builders().end();
}

const QPainterPath& path(std::string_view name) {
    // Outlines are built on first use and kept; painting runs on the main thread only.
    static std::map<std::string, QPainterPath, std::less<>> built;
    const std::string_view known = isKnown(name) ? name : std::string_view("questionmark.circle.fill");
    auto found = built.find(known);
    if (found == built.end()) {
        // Outlines come out of path boolean operations, whose holes need the odd-even rule they carry.
        found = built.emplace(std::string(known), builders().find(known)->second()).first;
    }
    return found->second;
}

void paint(QPainter& painter, std::string_view name, const QRectF& box, const QColor& color) {
    const double side = std::min(box.width(), box.height());
    if (side <= 0) return;
    QTransform place;
    place.translate(box.center().x() - side / 2, box.center().y() - side / 2);
    place.scale(side / designSide, side / designSide);
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(color);
    painter.drawPath(place.map(path(name)));
    painter.restore();
}

QPixmap pixmap(std::string_view name, const QColor& color, double side, double devicePixelRatio) {
    const int pixels = std::max(1, static_cast<int>(std::ceil(side * devicePixelRatio)));
    QPixmap image(pixels, pixels);
    image.setDevicePixelRatio(devicePixelRatio);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    paint(painter, name, QRectF(0, 0, side, side), color);
    return image;
}

} // namespace tovrin::Symbols
