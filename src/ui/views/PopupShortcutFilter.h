#pragma once

#include <QObject>

namespace tovrin {

class KeyboardShortcuts;

// While one of the application's own popups or menus holds the keyboard, X gives every key to the
// application and none to the global grabs. This filter then takes a registered shortcut's press
// from the application's key events, fires it, and keeps it from the popup.
class PopupShortcutFilter : public QObject {
public:
    // Installs itself on the application, which must exist by then.
    explicit PopupShortcutFilter(KeyboardShortcuts& shortcuts, QObject* parent = nullptr);
    ~PopupShortcutFilter() override;

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    KeyboardShortcuts& m_shortcuts;
};

} // namespace tovrin
