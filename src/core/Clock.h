#pragma once

#include <chrono>

namespace tovrin {

using TimePoint = std::chrono::system_clock::time_point;
using Seconds = std::chrono::duration<double>;

// Wall-clock time: ages are measured against the wall-time stamps that agents write.
class Clock {
public:
    virtual ~Clock() = default;
    virtual TimePoint now() const = 0;
};

class SystemClock final : public Clock {
public:
    TimePoint now() const override { return std::chrono::system_clock::now(); }
};

inline double secondsBetween(TimePoint from, TimePoint to) {
    return Seconds(to - from).count();
}

inline TimePoint addSeconds(TimePoint t, double seconds) {
    return t + std::chrono::duration_cast<TimePoint::duration>(Seconds(seconds));
}

} // namespace tovrin
