#pragma once

#include "services/telemetry/TelemetrySignaling.h"

#include <string>
#include <utility>
#include <vector>

namespace tovrin::test {

// Logs each signal's name, with its parameters, into a list the test owns (clients are built
// inside the code under test and may outlive a single reference).
class RecordingTelemetryClient final : public TelemetrySignaling {
public:
    using Sent = std::vector<std::pair<std::string, SignalParameters>>;

    explicit RecordingTelemetryClient(Sent& sent) : m_sent(sent) {}
    void signal(const std::string& name, const SignalParameters& parameters) override {
        m_sent.emplace_back(name, parameters);
    }

private:
    Sent& m_sent;
};

} // namespace tovrin::test
