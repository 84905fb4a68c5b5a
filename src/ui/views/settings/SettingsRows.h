#pragma once

#include "ui/views/QtText.h"

#include <QString>
#include <functional>
#include <string_view>

class QHBoxLayout;
class QLabel;
class QPushButton;
class QWidget;

namespace tovrin {
class ForgeToggle;
}

namespace tovrin::SettingsRows {

using tovrin::qText;

// Body text of a row, in ash; it greys out with its row.
QLabel* bodyLabel(const QString& text, QWidget* parent = nullptr);
// A label at the left, the control at the right; the control is named after the label.
QHBoxLayout* labelled(QLabel* label, QWidget* control);
// A push button named after its text that runs `action` when pressed.
QPushButton* actionButton(std::string_view text, std::function<void()> action, QWidget* parent = nullptr);
// A toggle that hands the user's flips to `write`; the page sets its state from the model.
ForgeToggle* toggle(std::string_view text, std::function<void(bool)> write, QWidget* parent = nullptr);

} // namespace tovrin::SettingsRows
