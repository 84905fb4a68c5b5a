#include "alerts/AutoFocusChannel.h"

namespace tovrin {

AutoFocusChannel::AutoFocusChannel(SessionFocusing& focuser, const PreferencesStore& preferences)
    : m_focuser(focuser), m_preferences(preferences) {}

std::optional<AgentSession> AutoFocusChannel::choose(AutoFocusMode mode,
                                                     const std::vector<AgentSession>& newlyWaiting,
                                                     const std::vector<AgentSession>& allWaiting) {
    switch (mode) {
    case AutoFocusMode::off:
        return std::nullopt;
    case AutoFocusMode::single:
        // With two waiting the user is busy choosing; taking the window away would get in the way.
        if (allWaiting.size() == 1) return allWaiting.front();
        return std::nullopt;
    case AutoFocusMode::latest: {
        if (newlyWaiting.empty()) return std::nullopt;
        const AgentSession* best = &newlyWaiting.front();
        for (const auto& s : newlyWaiting) {
            if (s.updatedAt > best->updatedAt) best = &s;
        }
        return *best;
    }
    }
    return std::nullopt;
}

void AutoFocusChannel::notifyWaiting(const std::vector<AgentSession>& newlyWaiting,
                                     const std::vector<AgentSession>& allWaiting) {
    if (const auto session = choose(m_preferences.autoFocusMode(), newlyWaiting, allWaiting)) {
        m_focuser.focus(*session);
    }
}

void AutoFocusChannel::remindWaiting(const std::vector<AgentSession>& /*waiting*/) {}

} // namespace tovrin
