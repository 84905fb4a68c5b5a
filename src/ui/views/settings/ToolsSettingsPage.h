#pragma once

#include "ui/views/settings/SettingsPage.h"

#include <string>
#include <utility>
#include <vector>

namespace tovrin {

class ForgeToggle;
class HookSettingsViewModel;
class PreferencesStore;

// The hooks section (when there is a hooks model), then one switch per known tool for whether its
// sessions are listed.
class ToolsSettingsPage : public SettingsPage {
public:
    ToolsSettingsPage(PreferencesStore& preferences, HookSettingsViewModel* hooks, QWidget* parent = nullptr);

private:
    void refresh();

    PreferencesStore& m_preferences;
    std::vector<std::pair<std::string, ForgeToggle*>> m_toolToggles;
};

} // namespace tovrin
