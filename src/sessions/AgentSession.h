#pragma once

#include "core/Clock.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace tovrin {

enum class SessionState { working, waiting, idle };

constexpr std::string_view rawValue(SessionState state) {
    switch (state) {
    case SessionState::working:
        return "working";
    case SessionState::waiting:
        return "waiting";
    case SessionState::idle:
        break;
    }
    return "idle";
}

constexpr std::optional<SessionState> sessionStateFromRaw(std::string_view raw) {
    if (raw == "working") return SessionState::working;
    if (raw == "waiting") return SessionState::waiting;
    if (raw == "idle") return SessionState::idle;
    return std::nullopt;
}

// How to find a session's window.
struct Locator {
    std::optional<std::string> termProgram;
    std::optional<std::string> tmuxPane;
    std::optional<std::string> itermSession;
    std::optional<std::string> weztermPane;
    std::optional<std::string> tty;
    std::optional<std::string> app;

    bool operator==(const Locator&) const = default;
};

// One agent session as decoded from one status file.
struct AgentSession {
    std::int64_t schemaVersion = 1;
    std::string tool;
    std::string surface;
    std::string sessionId;
    std::optional<std::int64_t> pid;
    SessionState state = SessionState::idle;
    std::optional<std::string> reason;
    std::optional<std::string> transcriptPath;
    std::string cwd;
    std::optional<std::string> root;
    std::string title;
    std::optional<Locator> locator;
    TimePoint startedAt;
    TimePoint updatedAt;
    // The ssh destination whose status folder holds the file; none for this machine's own.
    std::optional<std::string> host;

    // The key of dismissals, of the waiting set and of rows on screen; unique across hosts.
    std::string id() const { return (host ? *host + ":" : std::string()) + tool + "__" + sessionId; }
    // The project folder: `root` where the agent named one, else the working directory.
    const std::string& projectPath() const { return root ? *root : cwd; }

    bool operator==(const AgentSession&) const = default;
};

} // namespace tovrin
