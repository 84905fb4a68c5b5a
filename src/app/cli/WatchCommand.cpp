#include "app/cli/WatchCommand.h"

#include "app/AlertServices.h"
#include "app/SessionTracking.h"
#include "app/cli/TerminalText.h"
#include "core/UserPaths.h"
#include "hooks/ToolIdentity.h"
#include "platform/linux/InstallationPaths.h"
#include "platform/qt/QtMainLoop.h"
#include "platform/qt/QuitOnTermination.h"
#include "ui/viewmodels/StatusReport.h"

#include <QCoreApplication>
#include <cstdio>
#include <memory>
#include <string>

namespace tovrin {
namespace {

// The terminal's own channel: one line for each session that starts waiting.
class WaitingLinePrinter final : public NotificationChannel {
public:
    explicit WaitingLinePrinter(const Clock& clock) : m_clock(clock) {}

    void notifyWaiting(const std::vector<AgentSession>& newlyWaiting,
                       const std::vector<AgentSession>&) override {
        for (const auto& s : newlyWaiting) {
            const std::string line = localClockTime(m_clock.now()) + "  " +
                                     ToolIdentity::named(s.tool).displayName + " is waiting \u00B7 " +
                                     s.title + " \u00B7 " + s.projectPath();
            std::printf("%s\n", StatusReport::printable(line).c_str());
        }
        std::fflush(stdout);
    }
    void remindWaiting(const std::vector<AgentSession>&) override {}

private:
    const Clock& m_clock;
};

std::string onOff(bool on) {
    return on ? "on" : "off";
}

void printOutputs(const PreferencesStore& preferences, AlertServices& alerts, const std::string& statusDir) {
    std::printf("Watching %s\n", statusDir.c_str());
    std::printf("Sound: %s", onOff(preferences.soundEnabled()).c_str());
    if (preferences.soundEnabled())
        std::printf(" (%s)", alerts.soundCatalog().displayName(preferences.alertSound()).c_str());
    std::printf(" \u00B7 Desktop notifications: %s \u00B7 Telegram: %s\n",
                onOff(preferences.notificationBannerEnabled()).c_str(),
                onOff(preferences.telegramEnabled()).c_str());
    if (alerts.secretStore().usesFallback()) std::printf("%s\n", alerts.secretStore().notice().c_str());
    std::printf("Ctrl-C to stop.\n\n");
    std::fflush(stdout);
}

} // namespace

int runWatchCommand(int argc, char** argv) {
    if (argc > 2) {
        std::fputs("Usage: tovrin watch\n", stderr);
        return 2;
    }
    QCoreApplication app(argc, argv);
    QuitOnTermination quitOnTermination;
    QtMainLoop loop;
    SystemClock clock;

    UserSettings settings;
    AlertServices alerts(loop, clock, settings.preferences, UserPaths::home(), InstallationPaths::shareDir());
    auto channels = alerts.channels(nullptr); // nothing to raise in a headless terminal
    channels.insert(channels.begin(), std::make_shared<WaitingLinePrinter>(clock));
    SessionTracking tracking(loop, clock, settings.preferences, std::move(channels));

    printOutputs(settings.preferences, alerts, tracking.localReader.directory().string());
    if (settings.preferences.notificationBannerEnabled()) alerts.banner().ensureCapabilitiesKnown();
    tracking.store.start();
    return QCoreApplication::exec();
}

} // namespace tovrin
