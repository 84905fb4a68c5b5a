#pragma once

#include "core/MainLoop.h"
#include "sessions/RemoteHostLinking.h"
#include "sessions/RemoteStatusFrames.h"
#include "sessions/SshCommand.h"

#include <QObject>
#include <filesystem>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

class QProcess;

namespace tovrin {

// One remote host's status folder, streamed through the user's own ssh: the remote shell runs
// remote-status-stream.sh, sent as its input, so nothing is installed there. A broken or refused
// connection is made again after 1, 2, 4 ... 60 s, from 1 s again once one has delivered a
// snapshot. Runs on the Qt event loop of the main thread and never waits on ssh.
class SshHostLink final : public RemoteHostLinking {
public:
    // `remoteFolder` empty: the host's own ${AGENT_STATUS_DIR:-~/.agent-status}.
    SshHostLink(MainLoop& loop, std::string destination, std::string remoteFolder,
                std::filesystem::path script, SshCommand ssh = {});
    ~SshHostLink() override;
    SshHostLink(const SshHostLink&) = delete;
    SshHostLink& operator=(const SshHostLink&) = delete;

    void start(std::function<void()> onChange) override;
    State state() const override { return m_state; }
    std::string problem() const override { return m_problem; }
    const RemoteSnapshot& snapshot() const override { return m_snapshot; }

private:
    std::vector<std::string> sshArguments() const;
    void connect();
    void readOutput();
    void readErrors();
    void ended(const std::string& fallback);
    void received(RemoteSnapshot snapshot);
    void changed() const;

    MainLoop& m_loop;
    std::string m_destination;
    std::string m_remoteFolder;
    std::filesystem::path m_script;
    std::string m_scriptText;
    SshCommand m_ssh;
    std::function<void()> m_onChange;

    State m_state = State::connecting;
    std::string m_problem;
    RemoteSnapshot m_snapshot;
    bool m_started = false;

    QObject m_context; // signal connections die with the link
    std::unique_ptr<QProcess> m_process;
    std::unique_ptr<QProcess> m_ended; // the last connection's ssh, finished
    std::unique_ptr<RemoteStatusFrames> m_frames;
    bool m_delivered = false;    // by the current connection
    std::string m_refusal;       // why the current connection's stream was refused
    std::string m_errorLine;     // the line ssh is writing on its error output
    std::string m_lastErrorLine; // the last one it finished
    Seconds m_backoff{1};
    TimerHandle m_retry;
};

} // namespace tovrin
