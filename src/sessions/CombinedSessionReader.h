#pragma once

#include "sessions/RemoteHostSessions.h"
#include "sessions/SessionReading.h"

#include <memory>
#include <string>
#include <vector>

namespace tovrin {

// A remote host out of reach, and why in the words of ssh or of the stream.
struct UnreachableHost {
    std::string host;
    std::string problem;

    bool operator==(const UnreachableHost&) const = default;
};

// This machine's status folder and those of the remote hosts, read as one list; each session's
// liveness is asked of the source it came from.
class CombinedSessionReader final : public SessionReading {
public:
    explicit CombinedSessionReader(SessionReading& local);

    void addHost(std::unique_ptr<RemoteHostSessions> host);
    const std::vector<std::unique_ptr<RemoteHostSessions>>& hosts() const { return m_hosts; }
    std::vector<UnreachableHost> unreachableHosts() const;

    std::vector<AgentSession> readAll() override;
    std::optional<bool> processAlive(const AgentSession& session) const override;

private:
    SessionReading& m_local;
    std::vector<std::unique_ptr<RemoteHostSessions>> m_hosts;
};

} // namespace tovrin
