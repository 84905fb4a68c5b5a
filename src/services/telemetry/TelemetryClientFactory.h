#pragma once

#include "core/Clock.h"
#include "core/HttpClient.h"
#include "core/MainLoop.h"
#include "services/telemetry/DeviceFacts.h"
#include "services/telemetry/TelemetrySignaling.h"

#include <filesystem>
#include <memory>
#include <string>

namespace tovrin {

class TelemetryManager;

// Builds the application's telemetry client for an app id, with its own store and worker thread, and
// is how the application reaches it at its end. Must outlive the clients it makes; main loop only.
class TelemetryClientFactory {
public:
    TelemetryClientFactory(MainLoop& loop, HttpClient& http, const Clock& clock,
                           DisplayFactsProvider displayFacts = {});

    std::unique_ptr<TelemetrySignaling> make(const std::string& appID);
    // At a normal end of the application: the client built last, if it still exists, keeps its
    // queue and statistics for the next run.
    void terminate();

    // $XDG_STATE_HOME/tovrin/<suite name>.json.
    static std::filesystem::path storeFile(const std::string& appID);

private:
    MainLoop& m_loop;
    HttpClient& m_http;
    const Clock& m_clock;
    DisplayFactsProvider m_displayFacts;
    std::weak_ptr<TelemetryManager> m_built;
};

} // namespace tovrin
