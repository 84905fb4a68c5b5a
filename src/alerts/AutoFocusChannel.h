#pragma once

#include "core/PreferencesStore.h"
#include "focus/SessionFocusing.h"
#include "sessions/NotificationChannel.h"

#include <optional>

namespace tovrin {

// Raises one waiting session's window by itself, as the auto-focus mode says. Never on reminders.
class AutoFocusChannel final : public NotificationChannel {
public:
    AutoFocusChannel(SessionFocusing& focuser, const PreferencesStore& preferences);

    void notifyWaiting(const std::vector<AgentSession>& newlyWaiting,
                       const std::vector<AgentSession>& allWaiting) override;
    void remindWaiting(const std::vector<AgentSession>& waiting) override;

    // The session a mode raises, if any: `single` only while exactly one waits; `latest` the
    // newest of the new ones, the earliest in the list on a tie.
    static std::optional<AgentSession> choose(AutoFocusMode mode,
                                              const std::vector<AgentSession>& newlyWaiting,
                                              const std::vector<AgentSession>& allWaiting);

private:
    SessionFocusing& m_focuser;
    const PreferencesStore& m_preferences;
};

} // namespace tovrin
