#pragma once

#include "services/telemetry/SignalPostBody.h"
#include "services/telemetry/TelemetryLog.h"

#include <cstddef>
#include <deque>
#include <filesystem>
#include <optional>
#include <vector>

namespace tovrin {

// The bounded queue of signals waiting to be sent, oldest first, and the file that carries it from
// one run to the next. Not thread-safe: the client touches it on its worker only.
class SignalCache {
public:
    static constexpr std::size_t maximumNumberOfSignalsToPopAtOnce = 100;

    // An absent file is the default one, `defaultFile()`.
    SignalCache(std::size_t cacheLimit, std::optional<std::filesystem::path> cacheFileURL,
                LogHandler logHandler);

    // $XDG_CACHE_HOME/tovrin/telemetrysignalcache.
    static std::filesystem::path defaultFile();

    // Appends, then drops the oldest beyond the limit.
    void push(SignalPostBody signal);
    void push(std::vector<SignalPostBody> batch);
    // The oldest signals, at most 100, taken out of the queue.
    std::vector<SignalPostBody> pop();
    std::size_t count() const { return m_cachedSignals.size(); }

    // Takes over what the last run left in the file, and deletes the file: it exists only from one
    // run's end to the next one's start. A file that can't be read as signals is dropped unread.
    void loadFromDisk();
    // Writes the queue to the file and empties it; on failure the signals are lost.
    void backupCache();

private:
    void trimToLimit();

    LogHandler m_logHandler;
    std::deque<SignalPostBody> m_cachedSignals;
    std::size_t m_cacheLimit;
    std::filesystem::path m_cacheFile;
};

} // namespace tovrin
