#pragma once

#include "sessions/NotificationChannel.h"

#include <memory>
#include <string>
#include <vector>

namespace tovrin::test {

// One call to a channel. For a reminder, `sessions` is the waiting list and `allWaiting` empty.
struct ChannelCall {
    enum class Kind { notifyWaiting, remindWaiting };

    std::string channel;
    Kind kind = Kind::notifyWaiting;
    std::vector<AgentSession> sessions;
    std::vector<AgentSession> allWaiting;
};

// Several channels write into one log, so that the order of calls across channels shows.
using ChannelLog = std::vector<ChannelCall>;

class RecordingChannel final : public NotificationChannel {
public:
    RecordingChannel(std::string name, std::shared_ptr<ChannelLog> log);

    void notifyWaiting(const std::vector<AgentSession>& newlyWaiting,
                       const std::vector<AgentSession>& allWaiting) override;
    void remindWaiting(const std::vector<AgentSession>& waiting) override;

private:
    std::string m_name;
    std::shared_ptr<ChannelLog> m_log;
};

// The ids of a list, in order: compact to compare and readable in failure messages.
std::vector<std::string> idsOf(const std::vector<AgentSession>& sessions);

} // namespace tovrin::test
