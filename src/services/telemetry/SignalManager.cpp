#include "services/telemetry/SignalManager.h"

#include "services/telemetry/ResponseDisposition.h"

#include <algorithm>
#include <cctype>
#include <cmath>
#include <memory>
#include <utility>

namespace tovrin {
namespace {

bool isPathSegment(const std::string& text) {
    return !text.empty() && std::all_of(text.begin(), text.end(), [](unsigned char c) {
        return std::isalnum(c) || c == '-' || c == '.' || c == '_' || c == '~';
    });
}

} // namespace

SignalManager::SignalManager(const TelemetryManagerConfiguration& configuration, MainLoop& loop,
                             HttpClient& http, RunOnWorker runOnWorker,
                             std::optional<std::filesystem::path> cacheFileURL)
    : m_configuration(configuration), m_loop(loop), m_http(http), m_runOnWorker(std::move(runOnWorker)),
      m_signalCache(configuration.cacheLimit, std::move(cacheFileURL), configuration.logHandler) {}

std::optional<std::string> SignalManager::signalURL(const std::string& apiBaseURL,
                                                    const std::optional<std::string>& namespace_) {
    const auto scheme = apiBaseURL.find("://");
    if (scheme == std::string::npos || scheme + 3 >= apiBaseURL.size()) return std::nullopt;
    if (const auto name = apiBaseURL.substr(0, scheme); name != "https" && name != "http")
        return std::nullopt;
    if (namespace_ && !isPathSegment(*namespace_)) return std::nullopt;

    std::string url = apiBaseURL;
    if (!url.ends_with('/')) url += '/';
    url += "v2/";
    if (namespace_) url += "namespace/" + *namespace_ + "/";
    return url;
}

void SignalManager::start() {
    m_runOnWorker([this] {
        m_signalCache.loadFromDisk();
        sendCachedSignalsRepeatedly();
    });
}

void SignalManager::enqueue(SignalPostBody signal) {
    m_signalCache.push(std::move(signal));
}

void SignalManager::backupCache() {
    m_signalCache.backupCache();
}

void SignalManager::sendCachedSignalsRepeatedly() {
    attempt();
    m_consecutiveFailures = 0;
    scheduleNextTransmission();
}

void SignalManager::scheduleNextTransmission() {
    const double backoff = m_configuration.transmitInterval.count() * std::exp2(m_consecutiveFailures);
    const Seconds delay(std::min(m_configuration.maxBackoffInterval.count(), backoff));
    // Timers belong to the main loop; assigning the new one cancels the one armed before.
    m_loop.post(m_lifetime.guard([this, delay] {
        m_sendTimerSource = m_loop.once(delay, [this] { m_runOnWorker([this] { attempt(); }); });
    }));
}

void SignalManager::attempt() {
    const auto& log = m_configuration.logHandler;
    log.log(LogLevel::debug, "Current signal cache count: " + std::to_string(m_signalCache.count()));
    auto batch = m_signalCache.pop();
    if (batch.empty()) {
        handleSendSuccess();
        return;
    }
    log.log(LogLevel::info, "Sending " + std::to_string(batch.size()) + " signals leaving a cache of " +
                                std::to_string(m_signalCache.count()) + " signals");
    auto body = encodeBatch(batch);
    send(std::move(batch), std::move(body));
}

void SignalManager::send(std::vector<SignalPostBody> batch, std::string body) {
    const auto url = signalURL(m_configuration.apiBaseURL, m_configuration.namespace_);
    if (!url) {
        m_configuration.logHandler.log(LogLevel::error, "Unable to construct signal API URL for namespace " +
                                                            m_configuration.namespace_.value_or("(none)"));
        handleSendFailure(std::move(batch));
        return;
    }
    HttpRequest request{.method = "POST",
                        .url = *url,
                        .headers = {{"Content-Type", "application/json"}},
                        .body = std::move(body),
                        .timeout = Seconds(60)};
    // The HTTP client lives on the main loop; its answer is handled back on the worker.
    m_loop.post(m_lifetime.guard([this, request = std::move(request), batch = std::move(batch)]() mutable {
        auto answer = std::make_shared<std::optional<HttpResult>>();
        auto handle = m_lifetime.guard([this, answer, batch = std::move(batch)]() mutable {
            m_runOnWorker([this, result = std::move(**answer), batch = std::move(batch)]() mutable {
                handleResult(result, std::move(batch));
            });
        });
        m_http.send(std::move(request), [answer, handle = std::move(handle)](HttpResult result) {
            answer->emplace(std::move(result));
            handle();
        });
    }));
}

void SignalManager::handleResult(const HttpResult& result, std::vector<SignalPostBody> batch) {
    const auto& log = m_configuration.logHandler;
    const auto disposition = ResponseDisposition::of(result);
    switch (disposition.kind) {
    case ResponseDisposition::Kind::success:
        log.log(LogLevel::debug, result.value().body);
        handleSendSuccess();
        return;
    case ResponseDisposition::Kind::drop:
        log.log(LogLevel::error, "Dropping " + std::to_string(batch.size()) +
                                     " signal(s): rejected by server " + disposition.reason);
        handleSendSuccess();
        return;
    case ResponseDisposition::Kind::retry:
        if (!result) {
            log.log(LogLevel::error, result.error().description());
        } else {
            const auto status = result.value().status;
            log.log(LogLevel::debug, "Failed to send events (status " +
                                         (status ? std::to_string(*status) : std::string("none")) +
                                         "), will try again later");
        }
        handleSendFailure(std::move(batch));
        return;
    }
}

void SignalManager::handleSendSuccess() {
    m_consecutiveFailures = 0;
    scheduleNextTransmission();
}

void SignalManager::handleSendFailure(std::vector<SignalPostBody> batch) {
    m_signalCache.push(std::move(batch));
    ++m_consecutiveFailures;
    scheduleNextTransmission();
}

} // namespace tovrin
