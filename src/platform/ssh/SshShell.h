#pragma once

#include "hooks/RemoteShell.h"
#include "sessions/SshCommand.h"

#include <string>

namespace tovrin {

// `sh -s` on a host over the user's own ssh, one connection per script; blocks until it ends.
class SshShell final : public RemoteShell {
public:
    SshShell(std::string destination, SshCommand ssh);

    const std::string& host() const override { return m_destination; }
    Result<Outcome> run(const std::string& script) override;

private:
    std::string m_destination;
    SshCommand m_ssh;
};

} // namespace tovrin
