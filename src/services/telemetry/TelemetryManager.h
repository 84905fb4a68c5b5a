#pragma once

#include "core/Clock.h"
#include "core/DefaultsStore.h"
#include "core/HttpClient.h"
#include "core/Lifetime.h"
#include "core/MainLoop.h"
#include "core/SerialQueue.h"
#include "services/telemetry/DeviceFacts.h"
#include "services/telemetry/LinuxSystemFacts.h"
#include "services/telemetry/LockedDefaultsStore.h"
#include "services/telemetry/SessionManager.h"
#include "services/telemetry/SignalManager.h"
#include "services/telemetry/TelemetryManagerConfiguration.h"
#include "services/telemetry/TelemetrySignaling.h"
#include "services/telemetry/TelemetryWorker.h"

#include <filesystem>
#include <memory>
#include <optional>
#include <string>

namespace tovrin {

// What the telemetry client stands on.
struct TelemetryServices {
    MainLoop& loop;
    HttpClient& http;
    const Clock& clock;
    std::unique_ptr<DefaultsStore> store; // the client's own, apart from the user's settings
    DisplayFactsProvider displayFacts = {};
    RunOnWorker runOnWorker = {}; // empty: a worker thread of the client's own
    SystemFactFiles systemFactFiles = {};
    std::optional<std::filesystem::path> cacheFileURL = {}; // empty: the default cache file
};

// The telemetry client: takes a named signal, adds the device, application and retention facts,
// queues it, and leaves the sending to its SignalManager. Nothing it does can fail in a way its caller
// sees. Half a second after it is built the first session starts, announced by
// "TelemetryDeck.Session.started".
class TelemetryManager final : public TelemetrySignaling {
public:
    TelemetryManager(TelemetryManagerConfiguration configuration, TelemetryServices services);
    ~TelemetryManager() override;
    TelemetryManager(const TelemetryManager&) = delete;
    TelemetryManager& operator=(const TelemetryManager&) = delete;

    // Any thread. Names and keys get their configured prefixes; reserved ones are logged, not refused.
    void signal(const std::string& name, const SignalParameters& parameters) override;
    void signal(const std::string& name, const SignalParameters& parameters, std::optional<double> floatValue,
                std::optional<std::string> customUserID);
    // The client's own signals, which may use the service's "TelemetryDeck." names. Any thread.
    void internalSignal(const std::string& name, const SignalParameters& parameters,
                        std::optional<double> floatValue = std::nullopt,
                        std::optional<std::string> customUserID = std::nullopt);

    // At a normal end of the application, on the main loop: writes the session statistics and the
    // queue, which the next run sends. Returns once the worker has written them.
    void terminate();

    // Main loop only.
    const std::string& sessionID() const { return m_sessionID; }

private:
    struct PendingSignal {
        std::string type;
        SignalParameters parameters;
        std::optional<double> floatValue;
        std::optional<std::string> customUserID;
    };
    // What only the main loop can tell about the moment a signal is taken.
    struct SignalContext {
        TimePoint receivedAt;
        std::string sessionID;
        DisplayFacts display;
        SignalParameters retention;
    };

    void takeSignal(PendingSignal signal);
    SignalPostBody postBody(PendingSignal signal, const SignalContext& context);
    void startNewSession();
    std::string readDefaultUser();
    SignalParameters prefixedKeys(const SignalParameters& parameters) const;
    void logError(const std::optional<std::string>& warning) const;

    // First, so that its thread is there for the others and stopped before any of them goes.
    std::unique_ptr<SerialQueue> m_ownWorker;
    RunOnWorker m_runOnWorker;
    TelemetryManagerConfiguration m_configuration;
    MainLoop& m_loop;
    const Clock& m_clock;
    LockedDefaultsStore m_store;
    DisplayFactsProvider m_displayFacts;
    SystemFactFiles m_systemFactFiles;
    std::optional<SystemFacts> m_systemFacts; // read once, on the worker
    std::string m_defaultUser;
    std::string m_sessionID;
    SignalManager m_signalManager;
    std::unique_ptr<SessionManager> m_sessionManager;
    TimerHandle m_sessionStart;
    Lifetime m_lifetime;
};

} // namespace tovrin
