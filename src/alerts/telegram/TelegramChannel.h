#pragma once

#include "alerts/telegram/SecretStoring.h"
#include "alerts/telegram/TelegramMessaging.h"
#include "core/PreferencesStore.h"
#include "sessions/NotificationChannel.h"

namespace tovrin {

// Sends one Telegram message when sessions start waiting; never on reminders. Token and chat id
// are read afresh at every alert. A message that fails is dropped without a word. Main loop only.
class TelegramChannel final : public NotificationChannel {
public:
    TelegramChannel(TelegramMessaging& messenger, SecretStoring& secrets, PreferencesStore& preferences);

    void notifyWaiting(const std::vector<AgentSession>& newlyWaiting,
                       const std::vector<AgentSession>& allWaiting) override;
    void remindWaiting(const std::vector<AgentSession>&) override {}

private:
    TelegramMessaging& m_messenger;
    SecretStoring& m_secrets;
    PreferencesStore& m_preferences;
};

} // namespace tovrin
