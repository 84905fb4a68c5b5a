#include "core/SerialQueue.h"

#include <utility>

namespace tovrin {

SerialQueue::SerialQueue() : m_worker([this] { work(); }) {}

SerialQueue::~SerialQueue() {
    {
        // Destroyed outside the lock, and before the join, so that what the dropped tasks hold is
        // let go of even while a running task still waits for it.
        std::deque<std::function<void()>> dropped;
        {
            std::lock_guard lock(m_mutex);
            m_stopping = true;
            dropped.swap(m_tasks);
        }
    }
    m_wake.notify_one();
    m_worker.join();
}

void SerialQueue::post(std::function<void()> task) {
    if (!task) return;
    {
        std::lock_guard lock(m_mutex);
        if (m_stopping) return;
        m_tasks.push_back(std::move(task));
    }
    m_wake.notify_one();
}

void SerialQueue::work() {
    for (;;) {
        std::function<void()> task;
        {
            std::unique_lock lock(m_mutex);
            m_wake.wait(lock, [this] { return m_stopping || !m_tasks.empty(); });
            if (m_stopping) return;
            task = std::move(m_tasks.front());
            m_tasks.pop_front();
        }
        try {
            task();
        } catch (...) {
            // A failing task must not take the queue, and the tasks behind it, down with it.
        }
    }
}

} // namespace tovrin
