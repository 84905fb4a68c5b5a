#pragma once

#include "ui/views/AppActionsFooter.h"

#include <QElapsedTimer>
#include <QRect>
#include <QWidget>

namespace tovrin {

class TrayViewModel;
class MenuContentView;
class PreferencesStore;

// The frameless panel that drops from the tray icon. It closes when another window takes over (a
// click elsewhere) or on Escape, keeps inside the screen, and follows its content's height. A
// top-level window rather than a popup, since assistive tools are never shown a popup's content;
// like a menu it stays out of the window manager's hands, so it stands where it is put and takes the
// keyboard itself, whatever the desktop thinks of focus taken by a background application.
class PanelWindow : public QWidget {
public:
    PanelWindow(TrayViewModel& model, PreferencesStore& preferences, AppActions actions,
                QWidget* parent = nullptr);

    // Opens by `anchor`, the tray icon's geometry; an empty anchor means the pointer's position.
    void openAt(const QRect& anchor);
    // What a click on the tray icon does: opens the panel, or closes it when it is open.
    void toggleAt(const QRect& anchor);

    MenuContentView* content() const { return m_content; }

protected:
    bool event(QEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void hideEvent(QHideEvent* event) override;

private:
    void fit();

    MenuContentView* m_content;
    QRect m_anchor;
    QElapsedTimer m_sinceClosed;
    bool m_fitPending = false;
};

} // namespace tovrin
