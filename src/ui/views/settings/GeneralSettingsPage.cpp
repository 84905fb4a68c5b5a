#include "ui/views/settings/GeneralSettingsPage.h"

#include "core/PreferencesStore.h"
#include "services/LoginItemManager.h"
#include "ui/theme/ForgeToggle.h"
#include "ui/views/ChangeRelay.h"
#include "ui/views/settings/SettingsGroup.h"
#include "ui/views/settings/SettingsRows.h"
#include "ui/views/settings/SettingsStepper.h"

namespace tovrin {

using SettingsRows::qText;

GeneralSettingsPage::GeneralSettingsPage(PreferencesStore& preferences, LoginItemManager& loginItems,
                                         QWidget* parent)
    : SettingsPage(parent), m_preferences(preferences), m_loginItems(loginItems), m_model(preferences),
      m_sessionTimeout(new SettingsStepper([this](int direction) { m_model.stepSessionTimeout(direction); })),
      m_launchAtLogin(SettingsRows::toggle(PreferencesText::launchAtLogin,
                                           [this](bool on) { m_loginItems.setEnabled(on); })),
      m_flagSilentWorking(SettingsRows::toggle(PreferencesText::flagSilentWorking,
                                               [this](bool on) { m_preferences.flagSilentWorking.set(on); })),
      m_usageAnalytics(SettingsRows::toggle(PreferencesText::usageAnalytics, [this](bool on) {
          m_preferences.usageAnalyticsEnabled.set(on);
      })) {
    auto* behavior = new SettingsGroup(qText(PreferencesText::behaviorGroup));
    behavior->addRow(m_sessionTimeout);
    behavior->addRow(m_launchAtLogin);
    behavior->addRow(m_flagSilentWorking);
    behavior->addCaption(qText(PreferencesText::flagSilentWorkingCaption));
    addGroup(behavior);

    auto* privacy = new SettingsGroup(qText(PreferencesText::privacyGroup));
    privacy->addRow(m_usageAnalytics);
    privacy->addCaption(qText(PreferencesText::usageAnalyticsCaption));
    addGroup(privacy);

    new ChangeRelay(
        preferences.objectWillChange, [this] { refresh(); }, this);
    new ChangeRelay(
        loginItems.willChange, [this] { refresh(); }, this);
    refresh();
}

void GeneralSettingsPage::refresh() {
    m_sessionTimeout->showValue(QString::fromStdString(m_model.sessionTimeoutText()),
                                m_model.canStepSessionTimeout(-1), m_model.canStepSessionTimeout(1));
    m_launchAtLogin->setChecked(m_loginItems.isEnabled());
    m_flagSilentWorking->setChecked(m_preferences.flagSilentWorking());
    m_usageAnalytics->setChecked(m_preferences.usageAnalyticsEnabled());
}

} // namespace tovrin
