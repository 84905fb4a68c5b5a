#include "platform/linux/StatusDirectoryWatcher.h"

#include <array>
#include <cerrno>
#include <chrono>
#include <cmath>
#include <optional>
#include <poll.h>
#include <sys/eventfd.h>
#include <sys/inotify.h>
#include <unistd.h>

namespace tovrin {
namespace {

constexpr std::uint32_t watchedEvents =
    IN_CREATE | IN_CLOSE_WRITE | IN_MOVED_TO | IN_MOVED_FROM | IN_DELETE | IN_ATTRIB | IN_ONLYDIR;

// Empties the inotify queue; the events themselves do not matter, only that there were some.
void drain(int fd) {
    alignas(inotify_event) std::array<char, 8192> buffer{};
    while (::read(fd, buffer.data(), buffer.size()) > 0) {
    }
}

} // namespace

StatusDirectoryWatcher::StatusDirectoryWatcher(std::filesystem::path path, Seconds debounce,
                                               std::function<void()> onChange)
    : m_path(std::move(path)), m_debounce(debounce), m_onChange(std::move(onChange)) {}

StatusDirectoryWatcher::~StatusDirectoryWatcher() {
    stop();
}

void StatusDirectoryWatcher::start() {
    if (m_thread.joinable()) return;
    const int inotifyFd = ::inotify_init1(IN_NONBLOCK | IN_CLOEXEC);
    if (inotifyFd < 0) return;
    if (::inotify_add_watch(inotifyFd, m_path.c_str(), watchedEvents) < 0) {
        ::close(inotifyFd);
        return;
    }
    m_wakeFd = ::eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK);
    if (m_wakeFd < 0) {
        ::close(inotifyFd);
        return;
    }
    m_thread = std::thread([this, inotifyFd, wakeFd = m_wakeFd] { run(inotifyFd, wakeFd); });
}

void StatusDirectoryWatcher::stop() {
    if (!m_thread.joinable()) return;
    const std::uint64_t one = 1;
    (void)::write(m_wakeFd, &one, sizeof one);
    m_thread.join();
    ::close(m_wakeFd);
    m_wakeFd = -1;
}

void StatusDirectoryWatcher::run(int inotifyFd, int wakeFd) {
    using Steady = std::chrono::steady_clock;
    const auto debounce = std::chrono::duration_cast<Steady::duration>(m_debounce);
    std::optional<Steady::time_point> deadline;

    for (;;) {
        int timeoutMs = -1;
        if (deadline) {
            const auto left = std::chrono::duration<double, std::milli>(*deadline - Steady::now()).count();
            timeoutMs = static_cast<int>(std::ceil(std::max(0.0, left)));
        }
        std::array<pollfd, 2> fds{{{inotifyFd, POLLIN, 0}, {wakeFd, POLLIN, 0}}};
        const int ready = ::poll(fds.data(), fds.size(), timeoutMs);
        if (ready < 0 && errno != EINTR) break;
        if (fds[1].revents != 0) break;
        if (fds[0].revents & POLLIN) {
            drain(inotifyFd);
            deadline = Steady::now() + debounce;
            continue;
        }
        if (deadline && Steady::now() >= *deadline) {
            deadline.reset();
            m_onChange();
        }
    }
    ::close(inotifyFd);
}

} // namespace tovrin
