#include "ui/views/settings/SettingsRows.h"

#include "ui/theme/ForgeTheme.h"
#include "ui/theme/ForgeToggle.h"
#include "ui/views/QtText.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>

namespace tovrin::SettingsRows {

QLabel* bodyLabel(const QString& text, QWidget* parent) {
    auto* label = new QLabel(text, parent);
    label->setFont(ForgeStyle::systemFont(13));
    // Set on the label itself: under the window's style sheet a parent's palette doesn't reach it.
    QPalette palette = label->palette();
    palette.setColor(QPalette::WindowText, ForgeStyle::qColor(ForgeTheme::ash));
    palette.setColor(QPalette::Disabled, QPalette::WindowText, ForgeStyle::qColor(ForgeTheme::ashDim));
    label->setPalette(palette);
    return label;
}

QHBoxLayout* labelled(QLabel* label, QWidget* control) {
    auto* row = new QHBoxLayout;
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(8);
    row->addWidget(label);
    row->addStretch(1);
    row->addWidget(control);
    label->setBuddy(control);
    control->setAccessibleName(label->text());
    return row;
}

QPushButton* actionButton(std::string_view text, std::function<void()> action, QWidget* parent) {
    auto* button = new QPushButton(qText(text), parent);
    button->setAccessibleName(button->text());
    button->setFont(ForgeStyle::systemFont(13));
    QObject::connect(button, &QPushButton::clicked, button, std::move(action));
    return button;
}

ForgeToggle* toggle(std::string_view text, std::function<void(bool)> write, QWidget* parent) {
    auto* control = new ForgeToggle(qText(text), parent);
    control->setAccessibleName(control->text());
    // Clicks only: a state set from the store must not be written back.
    QObject::connect(control, &ForgeToggle::clicked, control, std::move(write));
    return control;
}

} // namespace tovrin::SettingsRows
