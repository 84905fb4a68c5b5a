#pragma once

#include "core/Color.h"

#include <QPalette>
#include <QString>

namespace tovrin::SettingsStyle {

// The dark palette of the settings window, with ember as its accent.
QPalette palette(QPalette base);
// The look of the window's stock controls: buttons, text fields, slider, scroll bars, the sidebar
// list and drop-down lists. Text colours come from the palette, so labels keep their own.
QString styleSheet();
// A colour as a style sheet reads it.
QString cssColor(const Color& color, double opacity = 1);

} // namespace tovrin::SettingsStyle
