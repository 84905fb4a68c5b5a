#pragma once

#include "core/Clock.h"
#include "core/MainLoop.h"

#include <deque>
#include <functional>
#include <map>
#include <memory>
#include <mutex>

namespace tovrin::test {

// A clock that moves only when told to.
class ManualClock final : public Clock {
public:
    explicit ManualClock(TimePoint start) : m_now(start) {}
    TimePoint now() const override { return m_now; }
    void set(TimePoint t) { m_now = t; }
    void advance(double seconds) { m_now = addSeconds(m_now, seconds); }

private:
    TimePoint m_now;
};

// The main loop for tests: posted tasks wait for drain(), timers for advance(), which moves
// the fake clock from due time to due time and fires what is due in order.
class ManualLoop final : public MainLoop {
public:
    explicit ManualLoop(TimePoint start = defaultStart());

    void post(std::function<void()> task) override;
    TimerHandle repeat(Seconds interval, std::function<void()> fn) override;
    TimerHandle once(Seconds delay, std::function<void()> fn) override;

    // Runs posted tasks, also those that they post, until none is left. Returns how many ran.
    int drain();
    // Moves the clock forward by `seconds`, firing due timers and draining after each.
    void advance(double seconds);
    std::size_t activeTimers() const { return m_timers.size(); }
    std::size_t pendingTasks() const;

    ManualClock& clock() { return m_clock; }
    static TimePoint defaultStart();

private:
    struct Timer {
        TimePoint due;
        double interval; // 0 for a one-shot timer
        std::function<void()> fn;
    };
    TimerHandle addTimer(double delay, double interval, std::function<void()> fn);

    ManualClock m_clock;
    mutable std::mutex m_mutex;
    std::deque<std::function<void()>> m_posted;
    std::map<std::uint64_t, Timer> m_timers;
    std::uint64_t m_nextId = 1;
};

} // namespace tovrin::test
