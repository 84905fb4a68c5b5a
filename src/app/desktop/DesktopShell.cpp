#include "app/desktop/DesktopShell.h"

#include "app/desktop/AppCoordinator.h"
#include "platform/dbus/WindowRequests.h"
#include "ui/theme/ForgeTheme.h"
#include "ui/views/AboutView.h"
#include "ui/views/FeedbackView.h"
#include "ui/views/Openers.h"
#include "ui/views/PanelWindow.h"
#include "ui/views/TrayIcon.h"
#include "ui/views/settings/PreferencesView.h"

#include <QApplication>
#include <QMenu>

namespace tovrin {
namespace {

constexpr const char* noTrayTitle = "Tovrin has no tray here";
constexpr const char* noTrayBody =
    "This desktop shows no system tray icons, so the floating chip stands in for the tray icon.";

// The menu in the forge's colours, since the application loads no desktop style for it.
QString menuStyle() {
    const auto name = [](const Color& color) { return ForgeStyle::qColor(color).name(); };
    return QStringLiteral("QMenu { background: %1; color: %2; border: 1px solid %3; padding: 4px; }"
                          "QMenu::item { padding: 5px 18px; }"
                          "QMenu::item:selected { background: %3; color: %4; }"
                          "QMenu::separator { height: 1px; background: %3; margin: 4px 8px; }")
        .arg(name(ForgeTheme::ironTop), name(ForgeTheme::ash), name(ForgeTheme::edge),
             name(ForgeTheme::bronze));
}

} // namespace

DesktopShell::DesktopShell(AppCoordinator& coordinator, DesktopWindows windows)
    : m_coordinator(coordinator), m_windows(std::move(windows)),
      m_panel(std::make_unique<PanelWindow>(coordinator.trayViewModel(), coordinator.preferences(),
                                            panelActions())),
      m_menu(std::make_unique<QMenu>()) {
    m_icon = std::make_unique<TrayIcon>(coordinator.trayViewModel(),
                                        [this](const QIcon& icon, const QString& tip) {
                                            m_tray.setIcon(icon);
                                            m_tray.setToolTip(tip);
                                        });

    // Trays differ in which click they pass on; the menu offers the same ways in from any of them.
    m_menu->setStyleSheet(menuStyle());
    m_menu->addAction(QStringLiteral("Show sessions"), [this] { openPanel(); });
    m_menu->addAction(QStringLiteral("Settings"), [this] { openSettings(); });
    m_menu->addAction(QStringLiteral("Send feedback"), [this] { openFeedback(); });
    m_menu->addAction(QStringLiteral("About Tovrin"), [this] { openAbout(); });
    m_menu->addSeparator();
    m_menu->addAction(QStringLiteral("Quit Tovrin"), [] { QApplication::quit(); });
    m_tray.setContextMenu(m_menu.get());
    connect(&m_tray, &QSystemTrayIcon::activated, this, [this](QSystemTrayIcon::ActivationReason reason) {
        if (reason == QSystemTrayIcon::Trigger || reason == QSystemTrayIcon::DoubleClick) {
            m_panel->toggleAt(m_tray.geometry());
        }
    });
}

DesktopShell::~DesktopShell() {
    openers() = {};
}

void DesktopShell::launch() {
    openers().about.action = [this] { openAbout(); };
    openers().settings.action = [this] { openSettings(); };
    openers().feedback.action = [this] { openFeedback(); };
    m_requests =
        std::make_unique<WindowRequestService>([this](const std::string& window) { return show(window); });
    // Without a session bus, `tovrin settings` can't reach this copy; everything else works.
    (void)m_requests->publish();
    if (hasTray()) m_tray.show();
    m_coordinator.start();
    if (!hasTray()) {
        m_coordinator.chipController().standInForTray(*m_menu);
        tellNoTray();
    }
}

bool DesktopShell::hasTray() const {
    return QSystemTrayIcon::isSystemTrayAvailable();
}

void DesktopShell::openPanel() {
    m_panel->openAt(m_tray.geometry());
}

void DesktopShell::openAbout() {
    if (!m_about) {
        m_about = m_windows.about();
        m_about->setAttribute(Qt::WA_DeleteOnClose);
    }
    m_about->present();
}

void DesktopShell::openSettings() {
    // A closed window is only waiting to be deleted: showing it again would show it for a moment.
    if (!m_settings || !m_settings->isVisible()) {
        m_settings = m_windows.settings();
        m_settings->setAttribute(Qt::WA_DeleteOnClose);
    }
    m_settings->present();
}

void DesktopShell::openFeedback() {
    m_coordinator.feedback().reset();
    if (!m_feedback || !m_feedback->isVisible()) {
        m_feedback = m_windows.feedback();
        m_feedback->setAttribute(Qt::WA_DeleteOnClose);
    }
    m_feedback->present();
}

bool DesktopShell::show(const std::string& window) {
    if (window == "sessions") {
        openPanel();
    } else if (window == "settings") {
        openSettings();
    } else if (window == "about") {
        openAbout();
    } else if (window == "feedback") {
        openFeedback();
    } else {
        return false;
    }
    return true;
}

AppActions DesktopShell::panelActions() {
    return AppActions{
        .onPreferences = [] { openers().settings.open(); },
        .onFeedback = [] { openers().feedback.open(); },
        .onAbout = [this] { openAbout(); },
        .onQuit = [] { QApplication::quit(); },
    };
}

void DesktopShell::tellNoTray() {
    m_coordinator.alerts().notifier().show(noTrayTitle, noTrayBody);
}

} // namespace tovrin
