#include "ui/theme/SymbolPaths.h"

#include <QRectF>
#include <QTransform>

// The glyphs of the panel's buttons and rows, of the floating chip and of the windows they open.
namespace tovrin::SymbolPaths {

namespace {

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

QPainterPath questionmarkCircleFill() {
    QPainterPath hook;
    hook.moveTo(9, 9.6);
    hook.cubicTo(9, 5.6, 15.2, 5.6, 15.2, 9.4);
    hook.cubicTo(15.2, 11.8, 12, 12, 12, 14.2);
    const QPainterPath mark = stroked(hook, 2.3).united(circle({12, 17.6}, 1.4));
    return circle({12, 12}, 10).subtracted(mark);
}

QPainterPath checkmarkSealFill() {
    // A disc with a scalloped rim, the check cut out of it.
    QPainterPath seal = circle({12, 12}, 8.4);
    constexpr int scallops = 12;
    for (int i = 0; i < scallops; ++i) {
        QTransform turn;
        turn.translate(12, 12);
        turn.rotate(360.0 * i / scallops);
        seal = seal.united(turn.map(circle({0, -8.6}, 2.6)));
    }
    return seal.subtracted(stroked(polyline({{7.8, 12.4}, {10.8, 15.3}, {16.3, 9.3}}), 2.3));
}

} // namespace

std::span<const NamedPath> panelPaths() {
    static constexpr NamedPath paths[]{
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
        {"questionmark.circle.fill", questionmarkCircleFill},
        {"checkmark.seal.fill", checkmarkSealFill},
    };
    return paths;
}

} // namespace tovrin::SymbolPaths
