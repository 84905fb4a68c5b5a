#pragma once

// Shared by the files that draw the theme's symbols; not for use outside them.

#include <QPainterPath>
#include <QPointF>
#include <initializer_list>
#include <span>
#include <string_view>

namespace tovrin::SymbolPaths {

// Glyphs are drawn as filled outlines so that one fill paints every symbol at any size; strokes
// are turned into outlines with this width (in the 24-unit design square).
constexpr double lineWidth = 2.0;
constexpr double designSide = 24.0;

QPainterPath stroked(const QPainterPath& centreLine, double width = lineWidth);
QPainterPath polyline(std::initializer_list<QPointF> points);
QPainterPath circle(QPointF centre, double radius);

struct NamedPath {
    std::string_view name;
    QPainterPath (*build)();
};

// The glyphs by where they are seen.
std::span<const NamedPath> panelPaths();
std::span<const NamedPath> toolPaths();
std::span<const NamedPath> settingsPaths();

} // namespace tovrin::SymbolPaths
