#include "ui/views/settings/AlertsSettingsPage.h"

#include "core/PreferencesStore.h"
#include "ui/theme/ForgeToggle.h"
#include "ui/views/ChangeRelay.h"
#include "ui/views/settings/AlertSoundPicker.h"
#include "ui/views/settings/SettingsGroup.h"
#include "ui/views/settings/SettingsRows.h"
#include "ui/views/settings/SettingsStepper.h"

namespace tovrin {

using SettingsRows::qText;

AlertsSettingsPage::AlertsSettingsPage(PreferencesStore& preferences, const AlertSoundServices& sounds,
                                       QWidget* parent)
    : SettingsPage(parent), m_preferences(preferences), m_model(preferences),
      m_soundEnabled(SettingsRows::toggle(PreferencesText::soundEnabled,
                                          [this](bool on) { m_preferences.soundEnabled.set(on); })),
      m_soundPicker(new AlertSoundPicker(preferences.alertSound, sounds)),
      m_banner(SettingsRows::toggle(PreferencesText::notificationBanner,
                                    [this](bool on) { m_preferences.notificationBannerEnabled.set(on); })),
      m_repeatReminder(SettingsRows::toggle(
          PreferencesText::repeatReminder, [this](bool on) { m_preferences.repeatReminderEnabled.set(on); })),
      m_repeatEvery(new SettingsStepper([this](int direction) { m_model.stepRepeatReminder(direction); })) {
    auto* alerts = new SettingsGroup(qText(PreferencesText::alertsGroup));
    alerts->addRow(m_soundEnabled);
    alerts->addRow(m_soundPicker);
    alerts->addRow(m_banner);
    alerts->addCaption(qText(PreferencesText::notificationBannerCaption));
    alerts->addRow(m_repeatReminder);
    alerts->addRow(m_repeatEvery);
    addGroup(alerts);

    new ChangeRelay(
        preferences.objectWillChange, [this] { refresh(); }, this);
    refresh();
}

void AlertsSettingsPage::refresh() {
    m_soundEnabled->setChecked(m_preferences.soundEnabled());
    m_soundPicker->setListEnabled(m_model.isSoundListEnabled());
    m_banner->setChecked(m_preferences.notificationBannerEnabled());
    m_repeatReminder->setChecked(m_preferences.repeatReminderEnabled());
    m_repeatEvery->setEnabled(m_model.isRepeatReminderStepperEnabled());
    m_repeatEvery->showValue(QString::fromStdString(m_model.repeatReminderText()),
                             m_model.canStepRepeatReminder(-1), m_model.canStepRepeatReminder(1));
}

} // namespace tovrin
