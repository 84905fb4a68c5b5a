#pragma once

#include "core/PreferencesStore.h"
#include "core/Signal.h"
#include "services/hotkey/KeyboardShortcuts.h"

namespace tovrin {

// Connects the toggle shortcut to the floating chip's setting: each press shows or hides the chip.
class GlobalHotkeyManager {
public:
    GlobalHotkeyManager(PreferencesStore& preferences, KeyboardShortcuts& shortcuts);
    GlobalHotkeyManager(const GlobalHotkeyManager&) = delete;
    GlobalHotkeyManager& operator=(const GlobalHotkeyManager&) = delete;

    // Starts listening; later calls do nothing. Presses stop reaching the manager when it is destroyed.
    void start();

private:
    PreferencesStore& m_preferences;
    KeyboardShortcuts& m_shortcuts;
    Subscription m_keyDown;
    bool m_started = false;
};

} // namespace tovrin
