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
          loop, clock),
      m_loop(loop) {
    if (const auto resources =
            AdapterResources::locate(InstallationPaths::shareDir(), AdapterResources::processEnvironment()))
        m_streamScript = resources->remoteStreamScript();
    m_ssh = SshCommand::fromEnvironment();
    m_hostsSubscription = preferences.remoteHosts.observe(
        [this](const std::vector<std::string>& hosts) { connectHosts(hosts); });
}

void SessionTracking::connectHosts(const std::vector<std::string>& hosts) {
    if (!m_streamScript) return;
    for (auto it = m_answered.begin(); it != m_answered.end();) {
        if (std::find(hosts.begin(), hosts.end(), it->first) != hosts.end()) {
            ++it;
            continue;
        }
        reader.removeHost(it->first);
        it = m_answered.erase(it);
    }
    for (const auto& host : hosts) {
        if (m_answered.contains(host)) continue;
        m_answered[host] = false;
        auto link = std::make_unique<SshHostLink>(m_loop, host, "", *m_streamScript, m_ssh);
        auto* linkView = link.get();
        reader.addHost(std::make_unique<RemoteHostSessions>(host, std::move(link)));
        linkView->start([this, host, linkView] {
            if (linkView->state() != RemoteHostLinking::State::connecting) m_answered[host] = true;
            store.refresh();
            if (m_onAllAnswered && allAnswered()) m_onAllAnswered();
        });
    }
}

bool SessionTracking::allAnswered() const {
    return std::all_of(m_answered.begin(), m_answered.end(), [](const auto& entry) { return entry.second; });
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
