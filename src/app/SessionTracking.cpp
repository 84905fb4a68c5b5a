#include "app/SessionTracking.h"

#include "core/UserPaths.h"
#include "hooks/AdapterResources.h"
#include "platform/linux/InstallationPaths.h"
#include "platform/linux/StatusDirectoryWatcher.h"
#include "platform/ssh/SshHostLink.h"

#include <QEventLoop>
#include <QTimer>
#include <algorithm>

namespace tovrin {
namespace {

constexpr Seconds watcherDebounce{0.2};

} // namespace

UserSettings::UserSettings() : defaults(UserPaths::defaultsFile()), preferences(defaults) {}

SessionTracking::SessionTracking(MainLoop& loop, const Clock& clock, PreferencesStore& preferences,
                                 std::vector<std::shared_ptr<NotificationChannel>> channels)
    : localReader(UserPaths::statusDirectory()), reader(localReader),
      store(
          reader, preferences, std::move(channels),
          [directory = localReader.directory()](std::function<void()> onChange) {
              return std::make_unique<StatusDirectoryWatcher>(directory, watcherDebounce,
                                                              std::move(onChange));
          },
          loop, clock) {
    const auto hosts = preferences.remoteHosts();
    if (hosts.empty()) return;
    const auto resources =
        AdapterResources::locate(InstallationPaths::shareDir(), AdapterResources::processEnvironment());
    if (!resources) return;
    const auto ssh = SshCommand::fromEnvironment();
    m_answered.assign(hosts.size(), false);
    for (std::size_t i = 0; i < hosts.size(); ++i) {
        auto link = std::make_unique<SshHostLink>(loop, hosts[i], "", resources->remoteStreamScript(), ssh);
        auto* linkView = link.get();
        reader.addHost(std::make_unique<RemoteHostSessions>(hosts[i], std::move(link)));
        linkView->start([this, i, linkView] {
            if (linkView->state() != RemoteHostLinking::State::connecting) m_answered[i] = true;
            store.refresh();
            if (m_onAllAnswered && allAnswered()) m_onAllAnswered();
        });
    }
}

bool SessionTracking::allAnswered() const {
    return std::all_of(m_answered.begin(), m_answered.end(), [](bool answered) { return answered; });
}

void SessionTracking::awaitHosts(std::chrono::milliseconds limit) {
    if (allAnswered()) return;
    QEventLoop wait;
    QTimer::singleShot(limit, &wait, &QEventLoop::quit);
    m_onAllAnswered = [&wait] { wait.quit(); };
    wait.exec();
    m_onAllAnswered = nullptr;
}

} // namespace tovrin
