#pragma once

#include "ui/views/AppActionsFooter.h"

#include <QObject>
#include <QPointer>
#include <QSystemTrayIcon>
#include <functional>
#include <memory>

class QMenu;

namespace tovrin {

class AboutView;
class AppCoordinator;
class PanelWindow;
class StatusItemIcon;

// What stands in for the menu bar on a Linux desktop: the tray icon with its panel, and the windows
// opened from it. The icon's first appearance starts the coordinator.
class DesktopShell : public QObject {
public:
    // `makeAboutWindow` builds the About window when it is first asked for.
    DesktopShell(AppCoordinator& coordinator, std::function<AboutView*()> makeAboutWindow);
    ~DesktopShell() override;

    // Shows the tray icon, points the openers at this shell's windows and starts the coordinator.
    // Without a tray on this desktop it says so once, and the floating chip is the application's face.
    void launch();

    bool hasTray() const;
    void openPanel();
    void openAbout();
    PanelWindow& panel() { return *m_panel; }

private:
    AppActions panelActions();
    void tellNoTray();

    AppCoordinator& m_coordinator;
    std::function<AboutView*()> m_makeAboutWindow;
    QPointer<AboutView> m_about;
    std::unique_ptr<PanelWindow> m_panel;
    std::unique_ptr<QMenu> m_menu;
    QSystemTrayIcon m_tray;
    std::unique_ptr<StatusItemIcon> m_icon;
};

} // namespace tovrin
