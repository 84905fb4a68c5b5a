#include "app/desktop/AppCoordinator.h"

#include "app/desktop/DesktopDisplayFacts.h"
#include "core/BuildInfo.h"
#include "core/UserPaths.h"
#include "platform/linux/InstallationPaths.h"
#include "platform/qt/QtAppcastReader.h"

#include <QCoreApplication>

namespace tovrin {

AppCoordinator::AppCoordinator(MainLoop& loop, const Clock& clock)
    : m_alerts(loop, clock, m_settings.preferences, UserPaths::home(), InstallationPaths::shareDir()),
      m_tracking(loop, clock, m_settings.preferences, m_alerts.channels(&m_focus.focuser())),
      m_trayViewModel(m_tracking.store, m_focus.focuser(), loop), m_loginItems(m_autostart),
      m_chipController(m_trayViewModel, m_settings.preferences, m_settings.defaults, &m_chipPinner),
      m_globalShortcuts(
          makeGlobalShortcuts([](const Shortcut&) { return std::string("Show or hide the floating chip"); })),
      m_shortcuts(m_settings.defaults, *m_globalShortcuts), m_hotkey(m_settings.preferences, m_shortcuts),
      m_updater(UpdateConfiguration::ofThisBuild(),
                {.http = m_alerts.http(),
                 .reader = std::make_shared<QtAppcastReader>(),
                 .defaults = m_settings.defaults},
                InstallationPaths::prefixDir(),
                // Found now: once the update is in place, this process's own path leads nowhere.
                [this, desktop = InstallationPaths::desktopExecutable()] {
                    if (!desktop) return;
                    m_relaunchExecutable = desktop;
                    QCoreApplication::quit();
                }),
      m_telegramSettings(m_alerts.messenger(), m_alerts.secrets(), m_settings.preferences),
      m_telemetryClients(loop, m_alerts.http(), clock, desktopDisplayFacts),
      m_analytics(m_settings.preferences,
                  TelemetryAnalyticsReporter::configuredAppID(BuildInfo::telemetryAppId), loop,
                  [this](const std::string& appID) { return m_telemetryClients.make(appID); }),
      m_feedbackSubmitter(m_alerts.http(), NetlifyFeedbackSubmitter::submitURL(BuildInfo::feedbackEndpoint,
                                                                               BuildInfo::website)),
      m_feedback(m_feedbackSubmitter, m_analytics) {}

AppCoordinator::~AppCoordinator() {
    m_telemetryClients.terminate();
}

std::filesystem::path AppCoordinator::statusDirectory() {
    return UserPaths::statusDirectory();
}

void AppCoordinator::start() {
    if (m_started) return;
    m_started = true;

    std::error_code ignored; // a folder that can't be made leaves the list empty
    std::filesystem::create_directories(statusDirectory(), ignored);

    auto& preferences = m_settings.preferences;
    if (preferences.notificationBannerEnabled()) m_alerts.banner().ensureCapabilitiesKnown();
    bool first = true;
    m_cancellables.add(preferences.notificationBannerEnabled.observe([this, first](bool enabled) mutable {
        if (std::exchange(first, false) || !enabled) return;
        m_alerts.banner().ensureCapabilitiesKnown();
    }));

    m_tracking.store.start();

    m_chipController.buildPanel();
    m_chipController.observe();
    m_chipController.applyOpacity();
    m_chipController.evaluateVisibility();

    m_hotkey.start();

    m_analytics.start();
}

} // namespace tovrin
