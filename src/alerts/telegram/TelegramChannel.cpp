#include "alerts/telegram/TelegramChannel.h"

#include "alerts/WaitingMessageFormatter.h"

namespace tovrin {

TelegramChannel::TelegramChannel(TelegramMessaging& messenger, SecretStoring& secrets,
                                 PreferencesStore& preferences)
    : m_messenger(messenger), m_secrets(secrets), m_preferences(preferences) {}

void TelegramChannel::notifyWaiting(const std::vector<AgentSession>& newlyWaiting,
                                    const std::vector<AgentSession>&) {
    if (!m_preferences.telegramEnabled() || newlyWaiting.empty()) return;
    const auto token = m_secrets.string(TelegramSecretKeys::botToken);
    if (!token || token->empty()) return;
    const auto chatID = m_secrets.string(TelegramSecretKeys::chatID);
    if (!chatID || chatID->empty()) return;
    m_messenger.sendMessage(*token, *chatID, WaitingMessageFormatter::message(newlyWaiting),
                            [](const Result<void, TelegramError>&) {});
}

} // namespace tovrin
