#pragma once

#include "core/Clock.h"
#include "sessions/AgentSession.h"

#include <nlohmann/json.hpp>
#include <string>

namespace tovrin::test {

// A well-formed status file as the writer makes it; tests change fields from here.
nlohmann::ordered_json statusFile(const std::string& tool, const std::string& sessionId, SessionState state,
                                  TimePoint updatedAt);

// The record that decoding `statusFile(...)` yields, for comparisons.
AgentSession session(const std::string& tool, const std::string& sessionId, SessionState state,
                     TimePoint updatedAt);

} // namespace tovrin::test
