#pragma once

#include "core/Color.h"
#include "ui/theme/ForgeTheme.h"

#include <QFont>
#include <QString>

class QLabel;
class QWidget;

namespace tovrin::SmallWindow {

// What the small windows opened from the tray share (About, Feedback): how they come forward, and
// the looks of their buttons.

// Shows the window at the centre of the screen under the pointer, in front.
void presentCentred(QWidget& window);

// The window's dark iron ground with ash text, for the window and what it holds.
void useForgePalette(QWidget& window);

// A bordered button in one tint, ember by default: tinted text on a faint wash of it.
QString borderedButtonStyle(const Color& tint = ForgeTheme::ember);
// The window's main action: white text on solid ember.
QString prominentButtonStyle();
// A button that is only its text, in ash.
QString plainButtonStyle();

// A line of text in one colour on the window's own background.
QLabel* textLine(const QString& text, const QFont& font, const Color& color, QWidget* parent,
                 Qt::Alignment alignment = Qt::AlignHCenter);

} // namespace tovrin::SmallWindow
