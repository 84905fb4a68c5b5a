#pragma once

#include "sessions/AgentSession.h"

#include <cstddef>
#include <memory>
#include <optional>
#include <string_view>

namespace tovrin {

// Decodes one status file into an AgentSession, or nothing if any rule of the format is
// broken: a missing or mistyped required key, a mistyped optional key (null counts as absent),
// an unknown state word, or a date that is not internet date-time to the second.
// Holds one parser that is reused across files; not thread-safe.
class SessionFileDecoder {
public:
    // Bytes that must be readable (any value) behind the data passed to decodePadded().
    static constexpr std::size_t padding = 64;

    SessionFileDecoder();
    ~SessionFileDecoder();
    SessionFileDecoder(const SessionFileDecoder&) = delete;
    SessionFileDecoder& operator=(const SessionFileDecoder&) = delete;

    // `data` must be followed by `padding` readable bytes; saves a copy on the hot path.
    std::optional<AgentSession> decodePadded(const char* data, std::size_t length);
    std::optional<AgentSession> decode(std::string_view json);

private:
    struct Impl;
    std::unique_ptr<Impl> m_impl;
};

} // namespace tovrin
