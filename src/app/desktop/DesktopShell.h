#pragma once

#include "ui/views/AppActionsFooter.h"

#include <QObject>
#include <QPointer>
#include <QSystemTrayIcon>
#include <functional>
#include <memory>
#include <string>

class QMenu;

namespace tovrin {

class AboutView;
class AppCoordinator;
class FeedbackView;
class PanelWindow;
class PreferencesView;
class TrayIcon;
class WindowRequestService;

// The windows opened from the shell, each built when first asked for and gone when closed.
struct DesktopWindows {
    std::function<AboutView*()> about;
    std::function<PreferencesView*()> settings;
    std::function<FeedbackView*()> feedback;
};

// What stands in for the menu bar on a Linux desktop: the tray icon with its panel, and the windows
// opened from it. The icon's first appearance starts the coordinator.
class DesktopShell : public QObject {
public:
    DesktopShell(AppCoordinator& coordinator, DesktopWindows windows);
    ~DesktopShell() override;

    // Shows the tray icon, points the openers at this shell's windows and starts the coordinator.
    // Without a tray on this desktop it says so once, and the floating chip is the application's face.
    void launch();

    bool hasTray() const;
    void openPanel();
    void openAbout();
    void openSettings();
    // Each opening starts from an empty form.
    void openFeedback();
    // A window asked for by name from outside ("sessions", "settings", "about", "feedback"); false
    // for a name it doesn't know.
    bool show(const std::string& window);
    PanelWindow& panel() { return *m_panel; }

private:
    AppActions panelActions();
    void tellNoTray();

    AppCoordinator& m_coordinator;
    DesktopWindows m_windows;
    QPointer<AboutView> m_about;
    QPointer<PreferencesView> m_settings;
    QPointer<FeedbackView> m_feedback;
    std::unique_ptr<PanelWindow> m_panel;
    std::unique_ptr<QMenu> m_menu;
    QSystemTrayIcon m_tray;
    std::unique_ptr<TrayIcon> m_icon;
    std::unique_ptr<WindowRequestService> m_requests;
};

} // namespace tovrin
