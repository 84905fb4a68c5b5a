#pragma once

#include "ui/viewmodels/PreferencesViewModel.h"
#include "ui/views/settings/SettingsPage.h"

class QLabel;
class QSlider;

namespace tovrin {

class ForgeToggle;
class KeyboardShortcuts;
class ShortcutRecorder;
class PreferencesStore;
class SettingsComboBox;

// The Floating window and Auto-focus groups.
class WindowSettingsPage : public SettingsPage {
public:
    WindowSettingsPage(PreferencesStore& preferences, KeyboardShortcuts& shortcuts,
                       QWidget* parent = nullptr);

    QSlider* opacitySlider() const { return m_opacitySlider; }
    ShortcutRecorder* shortcutRecorder() const { return m_shortcutRecorder; }
    SettingsComboBox* autoFocusPicker() const { return m_autoFocus; }

private:
    QWidget* opacityControl();
    void refresh();

    PreferencesStore& m_preferences;
    PreferencesViewModel m_model;
    ForgeToggle* m_showFloatingChip;
    ForgeToggle* m_chipOnlyWhenWaiting;
    ShortcutRecorder* m_shortcutRecorder;
    QWidget* m_opacity = nullptr;
    QLabel* m_opacityPercent = nullptr;
    QSlider* m_opacitySlider = nullptr;
    SettingsComboBox* m_autoFocus;
};

} // namespace tovrin
