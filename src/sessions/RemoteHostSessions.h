#pragma once

#include "sessions/RemoteHostLinking.h"
#include "sessions/SessionFileDecoder.h"
#include "sessions/SessionReading.h"

#include <memory>
#include <string>

namespace tovrin {

// The sessions of one remote host: its link's last snapshot, decoded by the same rules as this
// machine's files and tagged with the host. Liveness is the host's word while it is connected.
class RemoteHostSessions final : public SessionReading {
public:
    RemoteHostSessions(std::string host, std::unique_ptr<RemoteHostLinking> link);

    const std::string& host() const { return m_host; }
    RemoteHostLinking& link() { return *m_link; }
    const RemoteHostLinking& link() const { return *m_link; }

    std::vector<AgentSession> readAll() override;
    std::optional<bool> processAlive(const AgentSession& session) const override;

private:
    std::string m_host;
    std::unique_ptr<RemoteHostLinking> m_link;
    SessionFileDecoder m_decoder;
};

} // namespace tovrin
