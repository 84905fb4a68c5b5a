#include "alerts/WaitingMessageFormatter.h"

#include "hooks/ToolIdentity.h"

namespace tovrin::WaitingMessageFormatter {

std::string lastPathComponent(const std::string& path) {
    if (path.empty()) return {};
    const auto last = path.find_last_not_of('/');
    if (last == std::string::npos) return "/";
    const auto slash = path.rfind('/', last);
    const auto start = slash == std::string::npos ? 0 : slash + 1;
    return path.substr(start, last + 1 - start);
}

Summary summary(const std::vector<AgentSession>& sessions) {
    if (sessions.size() == 1) {
        const auto& s = sessions.front();
        // A present but empty root still wins over cwd.
        const std::string& path = s.root ? *s.root : s.cwd;
        auto body = lastPathComponent(path);
        if (body.empty()) body = path;
        if (s.host) body += " on " + *s.host;
        return {ToolIdentity::named(s.tool).displayName + " is waiting", std::move(body)};
    }
    Summary result{std::to_string(sessions.size()) + " agents are waiting", {}};
    for (std::size_t i = 0; i < sessions.size(); ++i) {
        if (i > 0) result.body += ", ";
        result.body += ToolIdentity::named(sessions[i].tool).displayName;
        if (sessions[i].host) result.body += " on " + *sessions[i].host;
    }
    return result;
}

std::string message(const std::vector<AgentSession>& sessions) {
    auto [title, body] = summary(sessions);
    return body.empty() ? title : title + "\n" + body;
}

} // namespace tovrin::WaitingMessageFormatter
