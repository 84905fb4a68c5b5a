#include "sessions/RemoteHostList.h"

#include <algorithm>

namespace tovrin {

RemoteHostList::RemoteHostList(PreferencesStore& preferences) : m_preferences(preferences) {}

Result<void> RemoteHostList::add(std::string_view destination) {
    const std::string host(destination);
    if (host.empty()) return Result<void>::failure("No host given.");
    if (host.front() == '-')
        return Result<void>::failure("\"" + host + "\" would be read by ssh as an option.");
    const bool plain =
        std::all_of(host.begin(), host.end(), [](unsigned char c) { return c > 0x20 && c < 0x7f; });
    if (!plain) return Result<void>::failure("\"" + host + "\" holds blanks or control characters.");
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
