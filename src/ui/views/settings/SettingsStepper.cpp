#include "ui/views/settings/SettingsStepper.h"

#include "ui/theme/ForgeTheme.h"
#include "ui/viewmodels/PreferencesViewModel.h"
#include "ui/views/settings/SettingsRows.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>

namespace tovrin {

namespace {

QPushButton* stepButton(const QString& sign, std::string_view name, QWidget* parent) {
    auto* button = new QPushButton(sign, parent);
    button->setAccessibleName(SettingsRows::qText(name));
    button->setFixedSize(30, 24);
    button->setFont(ForgeStyle::systemFont(15, QFont::Medium));
    // The sign needs the whole narrow button.
    button->setStyleSheet(QStringLiteral("QPushButton { padding: 0; }"));
    button->setAutoRepeat(true);
    return button;
}

} // namespace

SettingsStepper::SettingsStepper(std::function<void(int)> onStep, QWidget* parent)
    : QWidget(parent), m_label(SettingsRows::bodyLabel(QString(), this)),
      m_decrease(stepButton(QStringLiteral("−"), PreferencesText::decrease, this)),
      m_increase(stepButton(QStringLiteral("+"), PreferencesText::increase, this)) {
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(4);
    row->addWidget(m_label);
    row->addStretch(1);
    row->addWidget(m_decrease);
    row->addWidget(m_increase);
    connect(m_decrease, &QPushButton::clicked, this, [onStep] { onStep(-1); });
    connect(m_increase, &QPushButton::clicked, this, [onStep] { onStep(1); });
}

void SettingsStepper::showValue(const QString& text, bool canDecrease, bool canIncrease) {
    m_label->setText(text);
    setAccessibleName(text);
    m_decrease->setEnabled(canDecrease);
    m_increase->setEnabled(canIncrease);
}

} // namespace tovrin
