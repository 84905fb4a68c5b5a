#pragma once

#include <QColor>
#include <QPixmap>
#include <string_view>

namespace tovrin::SettingsSymbols {

// The sidebar's glyphs: the theme's own where it has one, else the few only the settings window uses.
QPixmap pixmap(std::string_view name, const QColor& color, double side, double devicePixelRatio = 1);

} // namespace tovrin::SettingsSymbols
