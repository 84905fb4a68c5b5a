#include "ui/views/settings/ToolsSettingsPage.h"

#include "core/PreferencesStore.h"
#include "hooks/ToolIdentity.h"
#include "ui/theme/ForgeToggle.h"
#include "ui/viewmodels/PreferencesViewModel.h"
#include "ui/views/ChangeRelay.h"
#include "ui/views/settings/HookInstallSection.h"
#include "ui/views/settings/SettingsGroup.h"
#include "ui/views/settings/SettingsRows.h"

namespace tovrin {

using SettingsRows::qText;

ToolsSettingsPage::ToolsSettingsPage(PreferencesStore& preferences, HookSettingsViewModel* hooks,
                                     QWidget* parent)
    : SettingsPage(parent), m_preferences(preferences) {
    if (hooks) addGroup(new HookInstallSection(*hooks));

    auto* shown = new SettingsGroup(qText(PreferencesText::showInListGroup));
    for (const ToolIdentity& tool : ToolIdentity::all()) {
        auto* toggle = SettingsRows::toggle(tool.displayName,
                                            [this, id = tool.id](bool on) { m_preferences.setTool(id, on); });
        shown->addRow(toggle);
        m_toolToggles.emplace_back(tool.id, toggle);
    }
    shown->addCaption(qText(PreferencesText::showInListCaption));
    addGroup(shown);

    new ChangeRelay(
        preferences.objectWillChange, [this] { refresh(); }, this);
    refresh();
}

void ToolsSettingsPage::refresh() {
    for (const auto& [id, toggle] : m_toolToggles)
        toggle->setChecked(m_preferences.isToolEnabled(id));
}

} // namespace tovrin
