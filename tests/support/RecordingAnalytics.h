#pragma once

#include "services/telemetry/AnalyticsReporting.h"

#include <string>
#include <string_view>
#include <vector>

namespace tovrin::test {

// Keeps every signal it is asked to track.
class RecordingAnalytics final : public AnalyticsReporting {
public:
    void start() override {}
    void track(std::string_view signal) override { tracked.emplace_back(signal); }

    std::vector<std::string> tracked;
};

} // namespace tovrin::test
