#pragma once

#include "sessions/AgentSession.h"

#include <vector>

namespace tovrin {

// An alert output. Both calls come on the main loop, in list order (newest first), and must
// return at once: slow work is started by the channel itself. A channel absorbs its own failures.
class NotificationChannel {
public:
    virtual ~NotificationChannel() = default;
    // At least one session has just started waiting; `allWaiting` includes the new ones.
    virtual void notifyWaiting(const std::vector<AgentSession>& newlyWaiting,
                               const std::vector<AgentSession>& allWaiting) = 0;
    // A repeat reminder is due for the sessions that are waiting now.
    virtual void remindWaiting(const std::vector<AgentSession>& waiting) = 0;
};

} // namespace tovrin
