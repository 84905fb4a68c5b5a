#include "ui/theme/SymbolPaths.h"

#include <QPainterPathStroker>

namespace tovrin::SymbolPaths {

QPainterPath stroked(const QPainterPath& centreLine, double width) {
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

} // namespace tovrin::SymbolPaths
