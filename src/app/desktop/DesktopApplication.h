#pragma once

#include "app/desktop/AppCoordinator.h"
#include "app/desktop/DesktopShell.h"
#include "core/Clock.h"
#include "platform/qt/QtMainLoop.h"
#include "platform/qt/QuitOnTermination.h"
#include "ui/views/PopupShortcutFilter.h"

#include <QApplication>

namespace tovrin {

// The tray application as one object: Qt set up for it, the object graph and the shell around it.
class DesktopApplication {
public:
    DesktopApplication(int& argc, char** argv);

    // Shows the tray icon and starts everything; then `exec` runs until Quit.
    void launch() { m_shell.launch(); }
    int exec() { return QApplication::exec(); }

    AppCoordinator& coordinator() { return m_coordinator; }
    DesktopShell& shell() { return m_shell; }

private:
    PreferencesView* makeSettingsWindow();

    bool m_prepared; // Qt's environment is settled before the application object exists
    QApplication m_app;
    QuitOnTermination m_quitOnTermination;
    QtMainLoop m_loop;
    SystemClock m_clock;
    AppCoordinator m_coordinator;
    PopupShortcutFilter m_shortcutsInPopups;
    DesktopShell m_shell;
};

} // namespace tovrin
