#include "sessions/RemoteHostList.h"

#include "sessions/SshCommand.h"

#include <algorithm>

namespace tovrin {

RemoteHostList::RemoteHostList(PreferencesStore& preferences) : m_preferences(preferences) {}

Result<void> RemoteHostList::add(std::string_view destination) {
    if (auto problem = sshDestinationProblem(destination)) return Result<void>::failure(std::move(*problem));
    const std::string host(destination);
    auto hosts = m_preferences.remoteHosts();
    if (std::find(hosts.begin(), hosts.end(), host) != hosts.end())
        return Result<void>::failure(host + " is already watched.");
    hosts.push_back(host);
    m_preferences.remoteHosts.set(std::move(hosts));
    return {};
}

Result<void> RemoteHostList::remove(std::string_view destination) {
    auto hosts = m_preferences.remoteHosts();
    const auto removed = std::erase(hosts, std::string(destination));
    if (removed == 0) return Result<void>::failure(std::string(destination) + " is not watched.");
    m_preferences.remoteHosts.set(std::move(hosts));
    return {};
}

const std::vector<std::string>& RemoteHostList::all() const {
    return m_preferences.remoteHosts();
}

} // namespace tovrin
