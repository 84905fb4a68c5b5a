#pragma once

#include "ui/viewmodels/PreferencesViewModel.h"
#include "ui/views/settings/SettingsPage.h"

namespace tovrin {

class AlertSoundPicker;
struct AlertSoundServices;
class ForgeToggle;
class PreferencesStore;
class SettingsStepper;

// The Alerts group: the sound and its picker, the desktop notification, the repeated reminder.
class AlertsSettingsPage : public SettingsPage {
public:
    AlertsSettingsPage(PreferencesStore& preferences, const AlertSoundServices& sounds,
                       QWidget* parent = nullptr);

    AlertSoundPicker* soundPicker() const { return m_soundPicker; }
    SettingsStepper* repeatStepper() const { return m_repeatEvery; }

private:
    void refresh();

    PreferencesStore& m_preferences;
    PreferencesViewModel m_model;
    ForgeToggle* m_soundEnabled;
    AlertSoundPicker* m_soundPicker;
    ForgeToggle* m_banner;
    ForgeToggle* m_repeatReminder;
    SettingsStepper* m_repeatEvery;
};

} // namespace tovrin
