#include "services/LoginItemManager.h"

namespace tovrin {

LoginItemManager::LoginItemManager(LoginItems& items)
    : isEnabled(willChange, items.isEnabled()), m_items(items) {}

void LoginItemManager::setEnabled(bool enabled) {
    m_items.setEnabled(enabled);
    // Stored even when unchanged: the toggle already moved, and only this notification moves it back.
    refresh();
}

void LoginItemManager::refresh() {
    isEnabled.set(m_items.isEnabled());
}

} // namespace tovrin
