#include "ui/views/settings/WindowSettingsPage.h"

#include "core/AutoFocusMode.h"
#include "core/PreferencesStore.h"
#include "ui/theme/ForgeTheme.h"
#include "ui/theme/ForgeToggle.h"
#include "ui/views/ChangeRelay.h"
#include "ui/views/ShortcutRecorder.h"
#include "ui/views/settings/SettingsComboBox.h"
#include "ui/views/settings/SettingsGroup.h"
#include "ui/views/settings/SettingsRows.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QSlider>
#include <QVBoxLayout>

namespace tovrin {

using SettingsRows::qText;

WindowSettingsPage::WindowSettingsPage(PreferencesStore& preferences, KeyboardShortcuts& shortcuts,
                                       QWidget* parent)
    : SettingsPage(parent), m_preferences(preferences), m_model(preferences),
      m_showFloatingChip(SettingsRows::toggle(PreferencesText::showFloatingChip,
                                              [this](bool on) { m_preferences.showFloatingChip.set(on); })),
      m_chipOnlyWhenWaiting(
          SettingsRows::toggle(PreferencesText::chipOnlyWhenWaiting,
                               [this](bool on) { m_preferences.chipOnlyWhenWaiting.set(on); })),
      m_shortcutRecorder(new ShortcutRecorder(shortcuts)), m_autoFocus(new SettingsComboBox) {
    auto* floating = new SettingsGroup(qText(PreferencesText::floatingWindowGroup));
    floating->addRow(m_showFloatingChip);
    floating->addRow(SettingsRows::labelled(SettingsRows::bodyLabel(qText(PreferencesText::toggleShortcut)),
                                            m_shortcutRecorder));
    // Said where it is seen, not only in a tooltip: on Wayland the shortcut misses most windows.
    if (const QString note = m_shortcutRecorder->reachNote(); !note.isEmpty()) floating->addCaption(note);
    floating->addRow(m_chipOnlyWhenWaiting);
    floating->addRow(opacityControl());
    floating->addCaption(qText(PreferencesText::floatingWindowCaption));
    addGroup(floating);

    for (const AutoFocusMode mode : allAutoFocusModes)
        m_autoFocus->addItem(qText(label(mode)), qText(rawValue(mode)));
    connect(m_autoFocus, &QComboBox::activated, this, [this](int index) {
        const auto mode = autoFocusModeFromRaw(m_autoFocus->itemData(index).toString().toStdString());
        if (mode) m_preferences.autoFocusMode.set(*mode);
    });
    auto* autoFocus = new SettingsGroup(qText(PreferencesText::autoFocusGroup));
    autoFocus->addRow(SettingsRows::labelled(SettingsRows::bodyLabel(qText(PreferencesText::autoFocusPicker)),
                                             m_autoFocus));
    autoFocus->addCaption(qText(PreferencesText::autoFocusCaption));
    addGroup(autoFocus);

    new ChangeRelay(
        preferences.objectWillChange, [this] { refresh(); }, this);
    refresh();
}

QWidget* WindowSettingsPage::opacityControl() {
    m_opacity = new QWidget;
    auto* column = new QVBoxLayout(m_opacity);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(4);

    auto* line = new QHBoxLayout;
    auto* title = SettingsRows::bodyLabel(qText(PreferencesText::opacity));
    line->addWidget(title);
    line->addStretch(1);
    m_opacityPercent = SettingsRows::bodyLabel(QString());
    QPalette dim = m_opacityPercent->palette();
    dim.setColor(QPalette::WindowText, ForgeStyle::qColor(ForgeTheme::ashDim));
    m_opacityPercent->setPalette(dim);
    line->addWidget(m_opacityPercent);
    column->addLayout(line);

    m_opacitySlider = new QSlider(Qt::Horizontal);
    m_opacitySlider->setRange(PreferencesViewModel::opacityMinimum, PreferencesViewModel::opacityMaximum);
    m_opacitySlider->setSingleStep(1);
    m_opacitySlider->setPageStep(10);
    m_opacitySlider->setAccessibleName(title->text());
    title->setBuddy(m_opacitySlider);
    connect(m_opacitySlider, &QSlider::valueChanged, this,
            [this](int percent) { m_model.setOpacity(percent); });
    column->addWidget(m_opacitySlider);
    return m_opacity;
}

void WindowSettingsPage::refresh() {
    m_showFloatingChip->setChecked(m_preferences.showFloatingChip());
    m_chipOnlyWhenWaiting->setChecked(m_preferences.chipOnlyWhenWaiting());
    m_chipOnlyWhenWaiting->setEnabled(m_model.isChipOnlyWhenWaitingEnabled());
    m_opacity->setEnabled(m_model.isOpacityEnabled());
    m_opacityPercent->setText(QString::fromStdString(m_model.opacityText()));
    {
        // A value off the slider's grid stays as stored until the user moves the slider.
        const QSignalBlocker quiet(m_opacitySlider);
        m_opacitySlider->setValue(m_model.opacitySliderValue());
    }
    const int mode = m_autoFocus->findData(qText(rawValue(m_preferences.autoFocusMode())));
    m_autoFocus->setCurrentIndex(mode);
}

} // namespace tovrin
