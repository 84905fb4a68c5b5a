#include "services/hotkey/GlobalHotkeyManager.h"

namespace tovrin {

GlobalHotkeyManager::GlobalHotkeyManager(PreferencesStore& preferences, KeyboardShortcuts& shortcuts)
    : m_preferences(preferences), m_shortcuts(shortcuts) {}

void GlobalHotkeyManager::start() {
    if (m_started) return;
    m_started = true;
    m_keyDown = m_shortcuts.onKeyDown(ShortcutName::toggleFloatingChip(), [this] {
        m_preferences.showFloatingChip.set(!m_preferences.showFloatingChip());
    });
}

} // namespace tovrin
