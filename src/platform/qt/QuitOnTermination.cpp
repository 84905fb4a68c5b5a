#include "platform/qt/QuitOnTermination.h"

#include <QCoreApplication>
#include <array>
#include <csignal>
#include <fcntl.h>
#include <unistd.h>

namespace tovrin {
namespace {

constexpr std::array terminationSignals{SIGTERM, SIGINT, SIGHUP};

// A handler may do next to nothing, so it only wakes the event loop through this pipe.
int wakeRead = -1, wakeWrite = -1;

void wake(int) {
    const int saved = errno;
    const char byte = 1;
    [[maybe_unused]] const auto written = ::write(wakeWrite, &byte, 1);
    errno = saved;
}

} // namespace

QuitOnTermination::QuitOnTermination() {
    std::array<int, 2> ends{};
    if (::pipe2(ends.data(), O_CLOEXEC | O_NONBLOCK) != 0) return; // the signals keep their defaults
    wakeRead = ends[0];
    wakeWrite = ends[1];
    m_notifier = std::make_unique<QSocketNotifier>(wakeRead, QSocketNotifier::Read);
    QObject::connect(m_notifier.get(), &QSocketNotifier::activated, [] {
        char drained[16];
        while (::read(wakeRead, drained, sizeof drained) > 0) {
        }
        QCoreApplication::quit();
    });
    struct sigaction action {};
    action.sa_handler = wake;
    action.sa_flags = SA_RESTART;
    sigemptyset(&action.sa_mask);
    for (const int signal : terminationSignals)
        sigaction(signal, &action, nullptr);
}

QuitOnTermination::~QuitOnTermination() {
    if (!m_notifier) return;
    for (const int signal : terminationSignals)
        std::signal(signal, SIG_DFL);
    m_notifier.reset();
    ::close(wakeRead);
    ::close(wakeWrite);
    wakeRead = wakeWrite = -1;
}

} // namespace tovrin
