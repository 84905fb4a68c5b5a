#pragma once

#include "core/HttpClient.h"
#include "core/Lifetime.h"
#include "core/MainLoop.h"
#include "services/telemetry/SignalCache.h"
#include "services/telemetry/TelemetryManagerConfiguration.h"
#include "services/telemetry/TelemetryWorker.h"

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

namespace tovrin {

// Sends the queued signals in batches of at most 100, one attempt per interval: 10 seconds, doubled
// after each failure up to 300, back to 10 after a success. A failed batch goes back into the queue
// behind newer signals; a batch the server refuses for good is dropped. Exactly one timer is armed
// at a time, and the chain never ends: an empty queue is polled.
class SignalManager {
public:
    SignalManager(const TelemetryManagerConfiguration& configuration, MainLoop& loop, HttpClient& http,
                  RunOnWorker runOnWorker, std::optional<std::filesystem::path> cacheFileURL);
    SignalManager(const SignalManager&) = delete;
    SignalManager& operator=(const SignalManager&) = delete;

    // Loads what the last run left behind, then makes the first attempt. Any thread.
    void start();
    // Worker only.
    void enqueue(SignalPostBody signal);
    void backupCache();
    std::size_t queuedCount() const { return m_signalCache.count(); }

    // The POST address: the base, a slash, "v2/" and the namespace's path if there is one; none when
    // the base is no web address or the namespace no plain path segment.
    static std::optional<std::string> signalURL(const std::string& apiBaseURL,
                                                const std::optional<std::string>& namespace_);

private:
    void sendCachedSignalsRepeatedly();
    void scheduleNextTransmission();
    void attempt();
    void send(std::vector<SignalPostBody> batch, std::string body);
    void handleResult(const HttpResult& result, std::vector<SignalPostBody> batch);
    void handleSendSuccess();
    void handleSendFailure(std::vector<SignalPostBody> batch);

    TelemetryManagerConfiguration m_configuration;
    MainLoop& m_loop;
    HttpClient& m_http;
    RunOnWorker m_runOnWorker;
    // On the worker.
    SignalCache m_signalCache;
    int m_consecutiveFailures = 0;
    // On the main loop.
    TimerHandle m_sendTimerSource;
    Lifetime m_lifetime;
};

} // namespace tovrin
