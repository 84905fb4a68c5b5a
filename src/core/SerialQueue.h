#pragma once

#include <condition_variable>
#include <deque>
#include <functional>
#include <mutex>
#include <thread>

namespace tovrin {

// Runs posted tasks one at a time, in the order they were posted, on one worker thread of its own.
// Destruction lets the task that is running finish, drops the ones still waiting, and joins: work
// queued at shutdown (raising a window, say) has no one left to serve.
class SerialQueue {
public:
    SerialQueue();
    ~SerialQueue();
    SerialQueue(const SerialQueue&) = delete;
    SerialQueue& operator=(const SerialQueue&) = delete;

    // Thread-safe; never runs the task on the calling thread, even when called from a task.
    void post(std::function<void()> task);

private:
    void work();

    std::mutex m_mutex;
    std::condition_variable m_wake;
    std::deque<std::function<void()>> m_tasks;
    bool m_stopping = false;
    std::thread m_worker; // last: starts once the rest is built
};

} // namespace tovrin
