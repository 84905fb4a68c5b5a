#include "platform/ssh/SshHostLink.h"

#include "core/AsciiText.h"
#include "hooks/HookTemplateRenderer.h"
#include "sessions/SshCommand.h"

#include <QProcess>
#include <QStringList>
#include <algorithm>
#include <fstream>
#include <iterator>

namespace tovrin {
namespace {

constexpr std::size_t maxErrorLine = 300;
constexpr Seconds maxBackoff{60};

} // namespace

SshHostLink::SshHostLink(MainLoop& loop, std::string destination, std::string remoteFolder,
                         std::filesystem::path script, SshCommand ssh)
    : m_loop(loop), m_destination(std::move(destination)), m_remoteFolder(std::move(remoteFolder)),
      m_script(std::move(script)), m_ssh(std::move(ssh)) {}

SshHostLink::~SshHostLink() {
    m_retry.cancel();
    if (!m_process) return;
    m_process->disconnect();
    // Killed, ssh ends at once: the wait is for its exit status, not for the connection.
    if (m_process->state() != QProcess::NotRunning) {
        m_process->kill();
        m_process->waitForFinished(1000);
    }
}

std::vector<std::string> SshHostLink::sshArguments() const {
    auto arguments = m_ssh.remoteShell(m_destination);
    arguments.push_back("--");
    // ssh hands the words to the remote user's shell as one line.
    if (!m_remoteFolder.empty()) arguments.push_back(HookTemplateRenderer::shellQuoted(m_remoteFolder));
    return arguments;
}

void SshHostLink::start(std::function<void()> onChange) {
    if (m_started) return;
    m_started = true;
    m_onChange = std::move(onChange);
    if (auto refusal = sshDestinationProblem(m_destination)) {
        m_state = State::unreachable;
        m_problem = std::move(*refusal);
        changed();
        return;
    }
    connect();
}

void SshHostLink::connect() {
    // Read once: every reconnection sends the same script.
    if (m_scriptText.empty()) {
        std::ifstream file(m_script, std::ios::binary);
        m_scriptText.assign(std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>());
    }
    if (m_scriptText.empty()) {
        ended("the remote stream script is missing: " + m_script.string());
        return;
    }

    m_delivered = false;
    m_refusal.clear();
    m_errorLine.clear();
    m_lastErrorLine.clear();
    m_frames = std::make_unique<RemoteStatusFrames>([this](RemoteSnapshot s) { received(std::move(s)); });

    QStringList arguments;
    for (const auto& argument : sshArguments())
        arguments << QString::fromStdString(argument);
    m_process = std::make_unique<QProcess>();
    auto* process = m_process.get();
    QObject::connect(process, &QProcess::started, &m_context, [this, process] {
        // The input stays open: its end is how the remote side learns that the link is gone.
        process->write(m_scriptText.data(), static_cast<qint64>(m_scriptText.size()));
    });
    QObject::connect(process, &QProcess::readyReadStandardOutput, &m_context, [this] { readOutput(); });
    QObject::connect(process, &QProcess::readyReadStandardError, &m_context, [this] { readErrors(); });
    QObject::connect(process, &QProcess::finished, &m_context, [this](int code, QProcess::ExitStatus status) {
        readOutput();
        readErrors();
        ended(status == QProcess::CrashExit ? "ssh stopped unexpectedly"
              : code == 255                 ? "ssh could not reach the host"
                            : "the remote stream ended with exit status " + std::to_string(code));
    });
    QObject::connect(process, &QProcess::errorOccurred, &m_context,
                     [this, process](QProcess::ProcessError error) {
                         if (error == QProcess::FailedToStart)
                             ended("ssh could not be started: " + process->errorString().toStdString());
                     });
    process->start(QString::fromStdString(m_ssh.program), arguments);
}

void SshHostLink::readOutput() {
    if (!m_process) return;
    const QByteArray bytes = m_process->readAllStandardOutput();
    if (!m_refusal.empty() || !m_frames) return;
    if (!m_frames->feed(std::string_view(bytes.constData(), static_cast<std::size_t>(bytes.size())))) {
        m_refusal = m_frames->error();
        m_process->kill();
    }
}

void SshHostLink::readErrors() {
    if (!m_process) return;
    const QByteArray bytes = m_process->readAllStandardError();
    for (char c : bytes) {
        if (c == '\n') {
            if (auto line = std::string(AsciiText::trimmed(std::exchange(m_errorLine, {}))); !line.empty())
                m_lastErrorLine = line;
        } else if (m_errorLine.size() < maxErrorLine) {
            m_errorLine += static_cast<unsigned char>(c) < ' ' ? ' ' : c;
        }
    }
}

void SshHostLink::received(RemoteSnapshot snapshot) {
    m_delivered = true;
    const bool news = m_state != State::connected || snapshot != m_snapshot;
    m_state = State::connected;
    m_problem.clear();
    m_snapshot = std::move(snapshot);
    if (news) changed();
}

void SshHostLink::ended(const std::string& fallback) {
    if (m_process) {
        m_process->disconnect();
        // Kept until the next connection or the end: this may run inside one of its signals.
        m_ended = std::move(m_process);
    }
    m_frames.reset();

    std::string why = m_refusal;
    if (why.empty()) why = AsciiText::trimmed(m_errorLine);
    if (why.empty()) why = m_lastErrorLine;
    if (why.empty()) why = fallback;
    m_state = State::unreachable;
    m_problem = why;

    if (m_delivered) m_backoff = Seconds(1);
    m_retry = m_loop.once(m_backoff, [this] { connect(); });
    m_backoff = std::min(m_backoff * 2, maxBackoff);
    changed();
}

void SshHostLink::changed() const {
    if (m_onChange) m_onChange();
}

} // namespace tovrin
