#include "sessions/CombinedSessionReader.h"

#include <algorithm>

namespace tovrin {

CombinedSessionReader::CombinedSessionReader(SessionReading& local) : m_local(local) {}

void CombinedSessionReader::addHost(std::unique_ptr<RemoteHostSessions> host) {
    m_hosts.push_back(std::move(host));
}

void CombinedSessionReader::removeHost(const std::string& host) {
    std::erase_if(m_hosts, [&](const auto& each) { return each->host() == host; });
}

std::vector<AgentSession> CombinedSessionReader::readAll() {
    auto sessions = m_local.readAll();
    for (const auto& host : m_hosts) {
        auto remote = host->readAll();
        sessions.insert(sessions.end(), std::make_move_iterator(remote.begin()),
                        std::make_move_iterator(remote.end()));
    }
    return sessions;
}

std::vector<UnreachableHost> CombinedSessionReader::unreachableHosts() const {
    std::vector<UnreachableHost> hosts;
    for (const auto& host : m_hosts)
        if (host->link().state() == RemoteHostLinking::State::unreachable)
            hosts.push_back({host->host(), host->link().problem()});
    return hosts;
}

std::optional<bool> CombinedSessionReader::processAlive(const AgentSession& session) const {
    if (!session.host) return m_local.processAlive(session);
    const auto it = std::find_if(m_hosts.begin(), m_hosts.end(),
                                 [&](const auto& host) { return host->host() == *session.host; });
    return it == m_hosts.end() ? std::nullopt : (*it)->processAlive(session);
}

} // namespace tovrin
