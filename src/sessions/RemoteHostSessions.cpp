#include "sessions/RemoteHostSessions.h"

namespace tovrin {

RemoteHostSessions::RemoteHostSessions(std::string host, std::unique_ptr<RemoteHostLinking> link)
    : m_host(std::move(host)), m_link(std::move(link)) {}

std::vector<AgentSession> RemoteHostSessions::readAll() {
    std::vector<AgentSession> sessions;
    for (const auto& [name, content] : m_link->snapshot().files) {
        auto session = m_decoder.decode(content);
        if (!session) continue;
        session->host = m_host;
        sessions.push_back(std::move(*session));
    }
    return sessions;
}

std::optional<bool> RemoteHostSessions::processAlive(const AgentSession& session) const {
    // An unreachable host's word is stale: its sessions then age out instead.
    if (!session.pid || m_link->state() != RemoteHostLinking::State::connected) return std::nullopt;
    return m_link->snapshot().alivePids.contains(*session.pid);
}

} // namespace tovrin
