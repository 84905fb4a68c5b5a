#include "platform/ssh/SshShell.h"

#include "hooks/ForeignJson.h"
#include "platform/linux/ChildProcess.h"

namespace tovrin {
namespace {

// ssh's own exit status when it could not connect or the connection broke.
constexpr int sshFailed = 255;
// A configuration file at its largest, and room for what the user's start-up files print.
constexpr std::size_t outputLimit = ForeignJson::maxReadBytes + (1 << 20);

} // namespace

SshShell::SshShell(std::string destination, SshCommand ssh)
    : m_destination(std::move(destination)), m_ssh(std::move(ssh)) {}

Result<RemoteShell::Outcome> SshShell::run(const std::string& script) {
    using R = Result<Outcome>;
    const auto finished = runWithInput(m_ssh.program, m_ssh.remoteShell(m_destination), script, outputLimit);
    if (!finished) return R::failure(m_ssh.program + " could not be started.");
    if (finished->outputTooLarge)
        return R::failure(m_destination + " answered with more than was asked for.");
    if (finished->exitStatus == sshFailed || finished->exitStatus < 0)
        return R::failure(
            m_destination + " can't be reached: " +
            (finished->errorLine.empty() ? "ssh ended without saying why" : finished->errorLine));
    return Outcome{finished->exitStatus, finished->output, finished->errorLine};
}

} // namespace tovrin
