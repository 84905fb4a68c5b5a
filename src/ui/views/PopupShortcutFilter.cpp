#include "ui/views/PopupShortcutFilter.h"

#include "services/hotkey/KeyboardShortcuts.h"
#include "ui/views/ShortcutKeys.h"

#include <QApplication>
#include <QKeyEvent>

namespace tovrin {

PopupShortcutFilter::PopupShortcutFilter(KeyboardShortcuts& shortcuts, QObject* parent)
    : QObject(parent), m_shortcuts(shortcuts) {
    if (QCoreApplication* app = QApplication::instance()) app->installEventFilter(this);
}

PopupShortcutFilter::~PopupShortcutFilter() {
    if (QCoreApplication* app = QApplication::instance()) app->removeEventFilter(this);
}

bool PopupShortcutFilter::eventFilter(QObject*, QEvent* event) {
    if (event->type() != QEvent::KeyPress || !QApplication::activePopupWidget()) return false;
    const auto& key = static_cast<const QKeyEvent&>(*event);
    const ShortcutKeys::Press press = ShortcutKeys::pressOf(key);
    if (press.keySym == 0 || isModifierKey(press.keySym)) return false;
    const Shortcut shortcut = normalisedShortcut(press.keySym, press.modifiers);
    if (!m_shortcuts.isRegistered(shortcut)) return false;
    // A held shortcut fires once, as the grab's does; its repeats are still kept from the popup.
    if (!key.isAutoRepeat()) m_shortcuts.keyDown(shortcut);
    return true;
}

} // namespace tovrin
