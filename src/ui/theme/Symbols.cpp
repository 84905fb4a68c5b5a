#include "ui/theme/Symbols.h"

#include "ui/theme/SymbolPaths.h"

#include <QTransform>
#include <algorithm>
#include <cmath>
#include <map>
#include <string>

namespace tovrin::Symbols {

namespace {

constexpr std::string_view fallback = "questionmark.circle.fill";

using Builders = std::map<std::string_view, QPainterPath (*)(), std::less<>>;

const Builders& builders() {
    static const Builders table = [] {
        Builders all;
        for (const auto group :
             {SymbolPaths::panelPaths(), SymbolPaths::toolPaths(), SymbolPaths::settingsPaths()})
            for (const SymbolPaths::NamedPath& named : group)
                all.emplace(named.name, named.build);
        return all;
    }();
    return table;
}

} // namespace

bool isKnown(std::string_view name) {
    return builders().contains(name);
}

const QPainterPath& path(std::string_view name) {
    // Outlines are built on first use and kept; painting runs on the main thread only.
    static std::map<std::string, QPainterPath, std::less<>> built;
    const std::string_view known = isKnown(name) ? name : fallback;
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
    place.scale(side / SymbolPaths::designSide, side / SymbolPaths::designSide);
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
