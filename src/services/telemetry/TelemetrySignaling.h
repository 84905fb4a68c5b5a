#pragma once

#include <map>
#include <string>

namespace tovrin {

using SignalParameters = std::map<std::string, std::string>;

// The telemetry client as the application's analytics see it: a named signal goes in, and whatever
// happens to it afterwards (queueing, sending, retrying) stays inside the client. Any thread.
class TelemetrySignaling {
public:
    virtual ~TelemetrySignaling() = default;
    virtual void signal(const std::string& name, const SignalParameters& parameters) = 0;
};

} // namespace tovrin
