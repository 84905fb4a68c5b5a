#pragma once

#include "sessions/RemoteHostSessions.h"
#include "sessions/SessionReading.h"

#include <memory>
#include <string>
#include <vector>

namespace tovrin {

// This machine's status folder and those of the remote hosts, read as one list; each session's
// liveness is asked of the source it came from.
class CombinedSessionReader final : public SessionReading {
public:
    explicit CombinedSessionReader(SessionReading& local);

    void addHost(std::unique_ptr<RemoteHostSessions> host);
    // Drops the host's link, and with it the host's sessions from the next pass.
    void removeHost(const std::string& host);
    const std::vector<std::unique_ptr<RemoteHostSessions>>& hosts() const { return m_hosts; }
    std::vector<UnreachableHost> unreachableHosts() const override;

    std::vector<AgentSession> readAll() override;
    std::optional<bool> processAlive(const AgentSession& session) const override;

private:
    SessionReading& m_local;
    std::vector<std::unique_ptr<RemoteHostSessions>> m_hosts;
};

} // namespace tovrin
