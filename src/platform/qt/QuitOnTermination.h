#pragma once

#include <QSocketNotifier>
#include <memory>

namespace tovrin {

// Ends Qt's event loop, as Quit does, on SIGTERM, SIGINT and SIGHUP: a logout sends SIGTERM, and what
// the application writes at a normal end must be written then too. One per process; the signals'
// default actions come back when it goes.
class QuitOnTermination {
public:
    QuitOnTermination();
    ~QuitOnTermination();
    QuitOnTermination(const QuitOnTermination&) = delete;
    QuitOnTermination& operator=(const QuitOnTermination&) = delete;

private:
    std::unique_ptr<QSocketNotifier> m_notifier;
};

} // namespace tovrin
