#pragma once

#include "sessions/AgentSession.h"

#include <string>
#include <vector>

// The one source of the words of a waiting alert: banner, Telegram message. Pure.
namespace tovrin::WaitingMessageFormatter {

struct Summary {
    std::string title;
    std::string body;
    bool operator==(const Summary&) const = default;
};

// One session: "<tool name> is waiting" over its project folder's name. Any other count, 0
// included: "<n> agents are waiting" over the tool names in list order.
Summary summary(const std::vector<AgentSession>& sessions);
// The title, then a line feed and the body when the body is not empty.
std::string message(const std::vector<AgentSession>& sessions);

// The last component of a path, trailing slashes ignored; "/" for the root, "" for "".
std::string lastPathComponent(const std::string& path);

} // namespace tovrin::WaitingMessageFormatter
