#include "support/ManualLoop.h"

#include "core/Iso8601.h"

namespace tovrin::test {

ManualLoop::ManualLoop(TimePoint start) : m_clock(start) {}

TimePoint ManualLoop::defaultStart() {
    return *parseIso8601("2026-11-22T12:00:00Z");
}

void ManualLoop::post(std::function<void()> task) {
    const std::lock_guard lock(m_mutex);
    m_posted.push_back(std::move(task));
}

std::size_t ManualLoop::pendingTasks() const {
    const std::lock_guard lock(m_mutex);
    return m_posted.size();
}

int ManualLoop::drain() {
    int ran = 0;
    for (;;) {
        std::function<void()> task;
        {
            const std::lock_guard lock(m_mutex);
            if (m_posted.empty()) return ran;
            task = std::move(m_posted.front());
            m_posted.pop_front();
        }
        task();
        ++ran;
    }
}

TimerHandle ManualLoop::addTimer(double delay, double interval, std::function<void()> fn) {
    const auto id = m_nextId++;
    m_timers.emplace(id, Timer{addSeconds(m_clock.now(), delay), interval, std::move(fn)});
    return TimerHandle([this, id] { m_timers.erase(id); });
}

TimerHandle ManualLoop::repeat(Seconds interval, std::function<void()> fn) {
    return addTimer(interval.count(), interval.count(), std::move(fn));
}

TimerHandle ManualLoop::once(Seconds delay, std::function<void()> fn) {
    return addTimer(delay.count(), 0, std::move(fn));
}

void ManualLoop::advance(double seconds) {
    const TimePoint end = addSeconds(m_clock.now(), seconds);
    drain();
    for (;;) {
        // The earliest due timer within the window; ties fire in creation order.
        auto next = m_timers.end();
        for (auto it = m_timers.begin(); it != m_timers.end(); ++it) {
            if (it->second.due <= end && (next == m_timers.end() || it->second.due < next->second.due))
                next = it;
        }
        if (next == m_timers.end()) break;
        m_clock.set(next->second.due);
        auto fn = next->second.fn; // a copy: the callback may cancel its own timer
        if (next->second.interval > 0) {
            next->second.due = addSeconds(next->second.due, next->second.interval);
        } else {
            m_timers.erase(next);
        }
        fn();
        drain();
    }
    m_clock.set(end);
}

} // namespace tovrin::test
