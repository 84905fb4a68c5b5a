#include "support/SampleSessions.h"

#include "core/Iso8601.h"

namespace tovrin::test {

nlohmann::ordered_json statusFile(const std::string& tool, const std::string& sessionId, SessionState state,
                                  TimePoint updatedAt) {
    return {
        {"schemaVersion", 1},
        {"tool", tool},
        {"surface", "cli"},
        {"sessionId", sessionId},
        {"state", std::string(rawValue(state))},
        {"cwd", "/home/dev/projects/" + sessionId},
        {"title", "Session " + sessionId},
        {"startedAt", formatIso8601(addSeconds(updatedAt, -600))},
        {"updatedAt", formatIso8601(updatedAt)},
    };
}

AgentSession session(const std::string& tool, const std::string& sessionId, SessionState state,
                     TimePoint updatedAt) {
    AgentSession s;
    s.schemaVersion = 1;
    s.tool = tool;
    s.surface = "cli";
    s.sessionId = sessionId;
    s.state = state;
    s.cwd = "/home/dev/projects/" + sessionId;
    s.title = "Session " + sessionId;
    s.startedAt = addSeconds(updatedAt, -600);
    s.updatedAt = updatedAt;
    return s;
}

} // namespace tovrin::test
