#pragma once

#include "core/Clock.h"
#include "core/Iso8601.h"

#include <cstdint>
#include <nlohmann/json.hpp>
#include <string>
#include <unistd.h>

namespace tovrin::bench {

// A status file as a hook writes it mid-session, about `size` bytes, owned by this process so
// that it counts as alive.
inline std::string statusFile(int index, const std::string& tool, const std::string& state,
                              TimePoint updatedAt, std::size_t size = 850) {
    const std::string id = "5f0c2a7e-91d4-4c3b-b8e6-" + std::to_string(100000000000 + index);
    const std::string project = "/home/developer/src/project-" + std::to_string(index % 37);
    const std::string pane = std::to_string(index % 50);
    nlohmann::ordered_json json = {
        {"schemaVersion", 1},
        {"tool", tool},
        {"surface", "cli"},
        {"sessionId", id},
        {"pid", static_cast<std::int64_t>(::getpid())},
        {"state", state},
        {"reason", ""},
        {"transcriptPath", "/home/developer/.agent/projects/-home-developer-src-project/" + id + ".jsonl"},
        {"cwd", project + "/packages/server"},
        {"root", project},
        {"title", "Refactor the session cache and add tests for the eviction path"},
        {"locator", {{"termProgram", "kitty"}, {"tmuxPane", "%" + pane}, {"tty", "/dev/pts/7"}}},
        {"startedAt", formatIso8601(addSeconds(updatedAt, -3600))},
        {"updatedAt", formatIso8601(updatedAt)},
    };
    // Fill the reason up to the file's size; plain ASCII, so each character adds one byte.
    const std::string phrase = "Permission needed to run: npm test -- --watch=false. ";
    const std::size_t base = json.dump(2).size();
    std::string reason;
    while (base + reason.size() < size)
        reason += phrase[reason.size() % phrase.size()];
    json["reason"] = reason;
    return json.dump(2);
}

} // namespace tovrin::bench
