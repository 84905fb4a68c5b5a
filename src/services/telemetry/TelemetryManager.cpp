#include "services/telemetry/TelemetryManager.h"

#include "core/Sha256.h"
#include "core/Uuid.h"
#include "services/telemetry/DefaultSignalPayload.h"
#include "services/telemetry/ReservedSignalNames.h"

#include <algorithm>
#include <future>
#include <utility>

namespace tovrin {
namespace {

constexpr Seconds sessionStartDelay{0.5};

std::string upperCased(std::string text) {
    std::transform(text.begin(), text.end(), text.begin(), [](unsigned char c) {
        return c >= 'a' && c <= 'z' ? static_cast<char>(c - 32) : static_cast<char>(c);
    });
    return text;
}

} // namespace

TelemetryManager::TelemetryManager(TelemetryManagerConfiguration configuration, TelemetryServices services)
    : m_ownWorker(services.runOnWorker ? nullptr : std::make_unique<SerialQueue>()),
      m_runOnWorker(services.runOnWorker
                        ? std::move(services.runOnWorker)
                        : RunOnWorker([queue = m_ownWorker.get()](std::function<void()> task) {
                              queue->post(std::move(task));
                          })),
      m_configuration(std::move(configuration)), m_loop(services.loop), m_clock(services.clock),
      m_store(std::move(services.store)), m_displayFacts(std::move(services.displayFacts)),
      m_systemFactFiles(std::move(services.systemFactFiles)), m_defaultUser(readDefaultUser()),
      m_sessionID(upperCased(m_configuration.sessionID)),
      m_signalManager(m_configuration, m_loop, services.http, m_runOnWorker,
                      std::move(services.cacheFileURL)) {
    m_signalManager.start();
    if (m_configuration.sessionStatsEnabled) {
        m_sessionManager = std::make_unique<SessionManager>(
            m_store, m_clock, m_loop, m_runOnWorker,
            [this](const std::string& name, const SignalParameters& parameters) {
                internalSignal(name, parameters);
            });
    }
    m_sessionStart = m_loop.once(sessionStartDelay, [this] { startNewSession(); });
}

TelemetryManager::~TelemetryManager() {
    // The worker's tasks use the members below; they end, or are dropped, before any member goes.
    m_ownWorker.reset();
}

std::string TelemetryManager::readDefaultUser() {
    if (m_configuration.defaultUser) return *m_configuration.defaultUser;
    if (const auto stored = m_store.object("defaultUserIdentifier"); stored && stored->is_string())
        return stored->get<std::string>();
    auto created = randomUuidString();
    m_runOnWorker([this, created] { m_store.set("defaultUserIdentifier", created); });
    return created;
}

void TelemetryManager::startNewSession() {
    m_sessionID = randomUuidString();
    if (m_sessionManager) m_sessionManager->startNewSession();
    if (m_configuration.sendNewSessionBeganSignal) internalSignal("TelemetryDeck.Session.started", {});
}

SignalParameters TelemetryManager::prefixedKeys(const SignalParameters& parameters) const {
    if (!m_configuration.defaultParameterPrefix) return parameters;
    SignalParameters prefixed;
    for (const auto& [key, value] : parameters)
        prefixed.emplace(*m_configuration.defaultParameterPrefix + key, value);
    return prefixed;
}

void TelemetryManager::logError(const std::optional<std::string>& warning) const {
    if (warning) m_configuration.logHandler.log(LogLevel::error, *warning);
}

void TelemetryManager::signal(const std::string& name, const SignalParameters& parameters) {
    signal(name, parameters, std::nullopt, std::nullopt);
}

void TelemetryManager::signal(const std::string& name, const SignalParameters& parameters,
                              std::optional<double> floatValue, std::optional<std::string> customUserID) {
    if (m_configuration.analyticsDisabled) return;
    const std::string type = m_configuration.defaultSignalPrefix.value_or("") + name;
    const auto prefixed = prefixedKeys(parameters);
    if (m_configuration.reservedParameterWarningsEnabled) {
        logError(ReservedSignalNames::nameWarning(type));
        for (const auto& entry : prefixed)
            logError(ReservedSignalNames::keyWarning(entry.first));
    }
    internalSignal(type, prefixed, floatValue, std::move(customUserID));
}

void TelemetryManager::internalSignal(const std::string& name, const SignalParameters& parameters,
                                      std::optional<double> floatValue,
                                      std::optional<std::string> customUserID) {
    if (m_configuration.analyticsDisabled) return;
    auto merged = prefixedKeys(m_configuration.defaultParameters());
    if (m_configuration.reservedParameterWarningsEnabled) {
        for (const auto& entry : merged)
            logError(ReservedSignalNames::keyWarning(entry.first));
    }
    for (const auto& [key, value] : parameters)
        merged.insert_or_assign(key, value);
    // The screen, the appearance and the session statistics belong to the main loop.
    m_loop.post(m_lifetime.guard([this, signal = PendingSignal{name, std::move(merged), floatValue,
                                                               std::move(customUserID)}]() mutable {
        takeSignal(std::move(signal));
    }));
}

void TelemetryManager::takeSignal(PendingSignal signal) {
    SignalContext context{.receivedAt = m_clock.now(),
                          .sessionID = m_sessionID,
                          .display = m_displayFacts ? m_displayFacts() : DisplayFacts{},
                          .retention =
                              m_sessionManager ? m_sessionManager->parameters() : SignalParameters{}};
    m_runOnWorker([this, signal = std::move(signal), context = std::move(context)]() mutable {
        auto body = postBody(std::move(signal), context);
        if (m_configuration.logHandler.enabled(LogLevel::debug))
            m_configuration.logHandler.log(
                LogLevel::debug,
                "Process signal: " +
                    wireJson(body).dump(-1, ' ', false, nlohmann::ordered_json::error_handler_t::replace));
        m_signalManager.enqueue(std::move(body));
    });
}

SignalPostBody TelemetryManager::postBody(PendingSignal signal, const SignalContext& context) {
    if (!m_systemFacts) m_systemFacts = readSystemFacts(m_systemFactFiles);
    auto payload = DefaultSignalPayload::parameters(*m_systemFacts, context.display, context.receivedAt);
    for (const auto& [key, value] : context.retention)
        payload.insert_or_assign(key, value);
    for (auto& [key, value] : signal.parameters)
        payload.insert_or_assign(key, std::move(value));
    return {.receivedAt = context.receivedAt,
            .appID = m_configuration.telemetryAppID,
            .clientUser = sha256Hex(signal.customUserID.value_or(m_defaultUser) + m_configuration.salt),
            .sessionID = context.sessionID,
            .type = std::move(signal.type),
            .floatValue = signal.floatValue,
            .payload = std::move(payload),
            .isTestMode = m_configuration.testMode ? "true" : "false"};
}

void TelemetryManager::terminate() {
    m_configuration.logHandler.log(LogLevel::debug, "appWillTerminate()");
    if (m_sessionManager) m_sessionManager->flush();
    // Behind the worker's pending work, so that signals already handed over are saved too.
    auto written = std::make_shared<std::promise<void>>();
    auto done = written->get_future();
    m_runOnWorker([this, written] {
        m_signalManager.backupCache();
        written->set_value();
    });
    done.wait();
}

} // namespace tovrin
