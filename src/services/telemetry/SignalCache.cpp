#include "services/telemetry/SignalCache.h"

#include "core/AtomicFile.h"
#include "core/UserPaths.h"

#include <algorithm>
#include <iterator>
#include <system_error>
#include <utility>

namespace tovrin {

SignalCache::SignalCache(std::size_t cacheLimit, std::optional<std::filesystem::path> cacheFileURL,
                         LogHandler logHandler)
    : m_logHandler(std::move(logHandler)), m_cacheLimit(cacheLimit),
      m_cacheFile(cacheFileURL ? std::move(*cacheFileURL) : defaultFile()) {}

std::filesystem::path SignalCache::defaultFile() {
    return UserPaths::cacheHome() / "tovrin" / "telemetrysignalcache";
}

void SignalCache::push(SignalPostBody signal) {
    m_cachedSignals.push_back(std::move(signal));
    trimToLimit();
}

void SignalCache::push(std::vector<SignalPostBody> batch) {
    std::move(batch.begin(), batch.end(), std::back_inserter(m_cachedSignals));
    trimToLimit();
}

std::vector<SignalPostBody> SignalCache::pop() {
    const auto n = std::min(m_cachedSignals.size(), maximumNumberOfSignalsToPopAtOnce);
    const auto end = m_cachedSignals.begin() + static_cast<std::ptrdiff_t>(n);
    std::vector<SignalPostBody> batch(std::make_move_iterator(m_cachedSignals.begin()),
                                      std::make_move_iterator(end));
    m_cachedSignals.erase(m_cachedSignals.begin(), end);
    return batch;
}

void SignalCache::trimToLimit() {
    if (m_cachedSignals.size() <= m_cacheLimit) return;
    m_cachedSignals.erase(m_cachedSignals.begin(),
                          m_cachedSignals.begin() +
                              static_cast<std::ptrdiff_t>(m_cachedSignals.size() - m_cacheLimit));
}

void SignalCache::loadFromDisk() {
    m_logHandler.log(LogLevel::debug, "Loading Telemetry cache from: " + m_cacheFile.string());
    const auto content = readWholeFile(m_cacheFile);
    if (!content) return;
    std::error_code ignored;
    std::filesystem::remove(m_cacheFile, ignored);

    const auto parsed = nlohmann::json::parse(content.value(), nullptr, /*allow_exceptions=*/false);
    if (!parsed.is_array()) return;
    std::size_t loaded = 0;
    for (const auto& element : parsed) {
        if (auto signal = signalFromCacheJson(element)) {
            m_cachedSignals.push_back(std::move(*signal));
            ++loaded;
        }
    }
    m_logHandler.log(LogLevel::debug, "Loaded " + std::to_string(loaded) + " signals");
    trimToLimit();
}

void SignalCache::backupCache() {
    nlohmann::ordered_json array = nlohmann::ordered_json::array();
    for (const auto& signal : m_cachedSignals)
        array.push_back(cacheJson(signal));
    const std::string content = array.dump(-1, ' ', false, nlohmann::ordered_json::error_handler_t::replace);

    std::error_code ignored;
    std::filesystem::create_directories(m_cacheFile.parent_path(), ignored);
    if (const auto written = writeFileAtomically(m_cacheFile, content, 0600); !written) {
        m_logHandler.log(LogLevel::error, "Error saving Telemetry cache: " + written.error());
    } else {
        m_logHandler.log(LogLevel::debug, "Saved Telemetry cache " + std::to_string(content.size()) + " of " +
                                              std::to_string(m_cachedSignals.size()) + " signals");
    }
    m_cachedSignals.clear();
}

} // namespace tovrin
