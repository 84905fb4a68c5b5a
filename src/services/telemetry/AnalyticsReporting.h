#pragma once

#include <string_view>

namespace tovrin {

// The application's usage signals, switched by the user and by whether the build carries an app id.
// Main loop only.
class AnalyticsReporting {
public:
    virtual ~AnalyticsReporting() = default;
    virtual void start() = 0;
    // Sent only while analytics are set up and the user's switch is on; dropped otherwise.
    virtual void track(std::string_view signal) = 0;
};

} // namespace tovrin
