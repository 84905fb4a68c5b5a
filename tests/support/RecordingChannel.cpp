#include "support/RecordingChannel.h"

#include <utility>

namespace tovrin::test {

RecordingChannel::RecordingChannel(std::string name, std::shared_ptr<ChannelLog> log)
    : m_name(std::move(name)), m_log(std::move(log)) {}

void RecordingChannel::notifyWaiting(const std::vector<AgentSession>& newlyWaiting,
                                     const std::vector<AgentSession>& allWaiting) {
    m_log->push_back({m_name, ChannelCall::Kind::notifyWaiting, newlyWaiting, allWaiting});
}

void RecordingChannel::remindWaiting(const std::vector<AgentSession>& waiting) {
    m_log->push_back({m_name, ChannelCall::Kind::remindWaiting, waiting, {}});
}

std::vector<std::string> idsOf(const std::vector<AgentSession>& sessions) {
    std::vector<std::string> ids;
    ids.reserve(sessions.size());
    for (const auto& s : sessions)
        ids.push_back(s.id());
    return ids;
}

} // namespace tovrin::test
