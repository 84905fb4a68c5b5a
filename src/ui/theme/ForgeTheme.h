#pragma once

#include "core/Color.h"
#include "ui/viewmodels/ForgePalette.h"

#include <QColor>
#include <QFont>
#include <QLinearGradient>

namespace tovrin::ForgeStyle {

QColor qColor(const Color& color);
// The same colour at another opacity, for glows and fades.
QColor qColor(const Color& color, double opacity);

// The engraved title face at a pixel size; a serif system face stands in when it isn't installed.
// Looked up on each call, so a font installed while the application runs is picked up.
QFont engraved(double pixelSize, QFont::Weight weight);
// The system face at a pixel size, for body text.
QFont systemFont(double pixelSize, QFont::Weight weight = QFont::Normal);

// The background of every window: iron from top to bottom over the given height.
QLinearGradient ironGradient(double height);

} // namespace tovrin::ForgeStyle
