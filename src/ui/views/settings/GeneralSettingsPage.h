#pragma once

#include "ui/viewmodels/PreferencesViewModel.h"
#include "ui/views/settings/SettingsPage.h"

namespace tovrin {

class ForgeToggle;
class LoginItemManager;
class PreferencesStore;
class SettingsStepper;

// The Behavior and Privacy groups.
class GeneralSettingsPage : public SettingsPage {
public:
    GeneralSettingsPage(PreferencesStore& preferences, LoginItemManager& loginItems,
                        QWidget* parent = nullptr);

private:
    void refresh();

    PreferencesStore& m_preferences;
    LoginItemManager& m_loginItems;
    PreferencesViewModel m_model;
    SettingsStepper* m_sessionTimeout;
    ForgeToggle* m_launchAtLogin;
    ForgeToggle* m_flagSilentWorking;
    ForgeToggle* m_usageAnalytics;
};

} // namespace tovrin
