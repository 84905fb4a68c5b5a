#pragma once

#include "services/telemetry/TelemetryWorker.h"
#include "support/ScopedEnv.h"

#include <ctime>
#include <optional>
#include <string>

namespace tovrin::test {

// The worker runs each task at once, on the test's thread.
inline const RunOnWorker inlineWorker = [](std::function<void()> task) { task(); };

// A time zone for the life of the object: local days and calendar fields follow it.
class ScopedTimeZone {
public:
    explicit ScopedTimeZone(const std::string& zone) : m_env(std::in_place, "TZ", zone) { ::tzset(); }
    ~ScopedTimeZone() {
        m_env.reset();
        ::tzset();
    }
    ScopedTimeZone(const ScopedTimeZone&) = delete;
    ScopedTimeZone& operator=(const ScopedTimeZone&) = delete;

private:
    std::optional<ScopedEnv> m_env;
};

} // namespace tovrin::test
