#pragma once

#include "core/Clock.h"
#include "sessions/DirectoryWatching.h"

#include <atomic>
#include <filesystem>
#include <functional>
#include <thread>

namespace tovrin {

// Watches one folder with inotify on a thread of its own. A burst of events yields one call
// of `onChange`, `debounce` seconds after the last event; the call comes on the watcher's
// thread. Destroying the watcher stops and joins the thread. A folder that cannot be watched
// is left alone silently.
class StatusDirectoryWatcher final : public DirectoryWatching {
public:
    StatusDirectoryWatcher(std::filesystem::path path, Seconds debounce, std::function<void()> onChange);
    ~StatusDirectoryWatcher() override;
    StatusDirectoryWatcher(const StatusDirectoryWatcher&) = delete;
    StatusDirectoryWatcher& operator=(const StatusDirectoryWatcher&) = delete;

    void start() override;
    void stop() override;
    bool running() const { return m_thread.joinable(); }

private:
    void run(int inotifyFd, int wakeFd);

    std::filesystem::path m_path;
    Seconds m_debounce;
    std::function<void()> m_onChange;
    std::thread m_thread;
    int m_wakeFd = -1;
};

} // namespace tovrin
