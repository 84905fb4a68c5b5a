#pragma once

#include "core/Clock.h"

#include <functional>
#include <utility>

namespace tovrin {

// Owns a timer; destroying or cancelling it stops the timer for good.
class [[nodiscard]] TimerHandle {
public:
    TimerHandle() = default;
    explicit TimerHandle(std::function<void()> cancel) : m_cancel(std::move(cancel)) {}
    TimerHandle(TimerHandle&& other) noexcept : m_cancel(std::exchange(other.m_cancel, nullptr)) {}
    TimerHandle& operator=(TimerHandle&& other) noexcept {
        if (this != &other) {
            cancel();
            m_cancel = std::exchange(other.m_cancel, nullptr);
        }
        return *this;
    }
    TimerHandle(const TimerHandle&) = delete;
    TimerHandle& operator=(const TimerHandle&) = delete;
    ~TimerHandle() { cancel(); }

    void cancel() {
        if (auto c = std::exchange(m_cancel, nullptr)) c();
    }
    bool active() const { return static_cast<bool>(m_cancel); }

private:
    std::function<void()> m_cancel;
};

// The one serial context of the application. Everything but the watcher thread and the
// focus queue runs here; other threads hand work over with post().
class MainLoop {
public:
    virtual ~MainLoop() = default;
    // Thread-safe.
    virtual void post(std::function<void()> task) = 0;
    virtual TimerHandle repeat(Seconds interval, std::function<void()> fn) = 0;
    virtual TimerHandle once(Seconds delay, std::function<void()> fn) = 0;
};

} // namespace tovrin
