#pragma once

#include "ui/views/settings/AlertSoundPicker.h"

#include <QWidget>
#include <functional>
#include <memory>

namespace tovrin {

class HookSettingsViewModel;
class KeyboardShortcuts;
class LoginItemManager;
class PreferencesStore;
class TelegramSettingsViewModel;

// What the settings window works on. All of it outlives the window, except the hooks model, which
// the window builds when it is built and owns.
struct PreferencesEnvironment {
    PreferencesStore& preferences;
    LoginItemManager& loginItems;
    TelegramSettingsViewModel& telegram;
    AlertSoundServices sounds;
    std::function<std::unique_ptr<HookSettingsViewModel>()> makeHooks;
    KeyboardShortcuts& shortcuts;
};

} // namespace tovrin
