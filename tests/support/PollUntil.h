#pragma once

#include <chrono>
#include <functional>
#include <thread>

namespace tovrin::test {

// Looks again every 20 ms until the condition holds or the time is up.
inline bool pollUntil(const std::function<bool()>& condition,
                      std::chrono::milliseconds limit = std::chrono::seconds(5)) {
    for (auto deadline = std::chrono::steady_clock::now() + limit;
         std::chrono::steady_clock::now() < deadline;) {
        if (condition()) return true;
        std::this_thread::sleep_for(std::chrono::milliseconds(20));
    }
    return condition();
}

} // namespace tovrin::test
