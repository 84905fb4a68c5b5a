#include "app/desktop/DesktopApplication.h"

#include "app/InstalledHooks.h"
#include "app/desktop/DesktopEnvironment.h"
#include "ui/theme/AppBrandIcon.h"
#include "ui/views/AboutView.h"
#include "ui/views/FeedbackView.h"
#include "ui/views/settings/PreferencesView.h"

#include <QIcon>

namespace tovrin {
namespace {

bool prepareQt() {
    DesktopEnvironment::prepareQt();
    return true;
}

} // namespace

DesktopApplication::DesktopApplication(int& argc, char** argv)
    : m_prepared(prepareQt()), m_app(argc, argv), m_coordinator(m_loop, m_clock),
      m_shortcutsInPopups(m_coordinator.shortcuts()),
      m_shell(m_coordinator, DesktopWindows{
                                 .about = [this] { return new AboutView(m_coordinator.updater()); },
                                 .settings = [this] { return makeSettingsWindow(); },
                                 .feedback = [this] { return new FeedbackView(m_coordinator.feedback()); },
                             }) {
    QApplication::setApplicationName(QStringLiteral("tovrin"));
    QGuiApplication::setDesktopFileName(QStringLiteral("app.tovrin.Tovrin"));
    QApplication::setQuitOnLastWindowClosed(false);
    QApplication::setWindowIcon(QIcon(AppBrandIcon::image()));
}

PreferencesView* DesktopApplication::makeSettingsWindow() {
    auto& coordinator = m_coordinator;
    auto& focus = coordinator.focus().manager();
    return new PreferencesView(PreferencesEnvironment{
        .preferences = coordinator.preferences(),
        .loginItems = coordinator.loginItems(),
        .telegram = coordinator.telegramSettings(),
        .sounds = {.catalog = coordinator.alerts().soundCatalog(),
                   .player = coordinator.alerts().player(),
                   .revealFolder =
                       [&focus](const std::filesystem::path& folder) {
                           focus.revealFolder(folder.string());
                       }},
        .makeHooks = makeInstalledHookSettings,
        .shortcuts = coordinator.shortcuts(),
    });
}

} // namespace tovrin
