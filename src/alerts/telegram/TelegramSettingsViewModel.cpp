#include "alerts/telegram/TelegramSettingsViewModel.h"

#include "core/Utf8.h"

#include <utility>

namespace tovrin {
namespace {

std::string trimmed(const std::string& text) {
    return std::string(Utf8::trim(text, Utf8::isWhitespace));
}

bool isPresent(const std::optional<std::string>& value) {
    return value && !value->empty();
}

} // namespace

std::string TelegramSettingsText::chatLabel(const std::string& chatID) {
    return "Chat " + chatID;
}

TelegramSettingsViewModel::TelegramSettingsViewModel(TelegramMessaging& messenger, SecretStoring& secrets,
                                                     PreferencesStore& preferences)
    : botToken(objectWillChange, {}), botUsername(objectWillChange, std::nullopt),
      linkedChatLabel(objectWillChange, std::nullopt), phase(objectWillChange, Phase{}),
      m_messenger(messenger), m_secrets(secrets), m_preferences(preferences) {}

template <class F> auto TelegramSettingsViewModel::whileAlive(F fn) {
    return [alive = std::weak_ptr<const char>(m_alive), fn = std::move(fn)](auto result) mutable {
        if (alive.lock()) fn(std::move(result));
    };
}

void TelegramSettingsViewModel::load() {
    botToken.set(m_secrets.string(TelegramSecretKeys::botToken).value_or(""));
    // The chat's name isn't stored, so after a restart the label is a generic one.
    if (const auto chatID = m_secrets.string(TelegramSecretKeys::chatID); isPresent(chatID)) {
        linkedChatLabel.set(TelegramSettingsText::chatLabel(*chatID));
        phase.set(Phase::of(Phase::Kind::linked));
    }
}

void TelegramSettingsViewModel::verify() {
    const std::string token = trimmed(botToken());
    if (token.empty()) return;
    phase.set(Phase::of(Phase::Kind::working));
    m_messenger.verifyBot(token, whileAlive([this, token](Result<std::string, TelegramError> label) {
                              if (!label) {
                                  // The stored token stays: the channel goes on using the last one that
                                  // worked.
                                  botUsername.set(std::nullopt);
                                  phase.set(Phase::failed(label.error().description()));
                                  return;
                              }
                              m_secrets.set(token, TelegramSecretKeys::botToken);
                              botUsername.set(label.value());
                              phase.set(Phase::of(Phase::Kind::verified));
                          }));
}

void TelegramSettingsViewModel::linkChat() {
    // The field's text, not the stored token: the user links with what they just verified.
    const std::string token = trimmed(botToken());
    if (token.empty()) return;
    phase.set(Phase::of(Phase::Kind::working));
    m_messenger.discoverChat(token, whileAlive([this](Result<TelegramChat, TelegramError> chat) {
                                 if (!chat) {
                                     phase.set(Phase::failed(chat.error().description()));
                                     return;
                                 }
                                 m_secrets.set(std::to_string(chat.value().id), TelegramSecretKeys::chatID);
                                 linkedChatLabel.set(chat.value().displayName());
                                 phase.set(Phase::of(Phase::Kind::linked));
                             }));
}

void TelegramSettingsViewModel::sendTest() {
    const auto token = m_secrets.string(TelegramSecretKeys::botToken);
    const auto chatID = m_secrets.string(TelegramSecretKeys::chatID);
    if (!isPresent(token) || !isPresent(chatID)) return;
    phase.set(Phase::of(Phase::Kind::working));
    m_messenger.sendMessage(*token, *chatID, std::string(TelegramSettingsText::testMessage),
                            whileAlive([this](Result<void, TelegramError> sent) {
                                phase.set(sent ? Phase::of(Phase::Kind::testSent)
                                               : Phase::failed(sent.error().description()));
                            }));
}

bool TelegramSettingsViewModel::tokenFieldEnabled() const {
    return m_preferences.telegramEnabled() && phase().kind != Phase::Kind::working;
}

bool TelegramSettingsViewModel::verifyEnabled() const {
    // The untrimmed text: a field of blanks enables the button, and verify() then does nothing.
    return tokenFieldEnabled() && !botToken().empty();
}

bool TelegramSettingsViewModel::linkChatEnabled() const {
    return tokenFieldEnabled() && botUsername().has_value();
}

bool TelegramSettingsViewModel::sendTestEnabled() const {
    return tokenFieldEnabled() && linkedChatLabel().has_value();
}

std::optional<TelegramStatusLine> TelegramSettingsViewModel::statusLine() const {
    using Kind = Phase::Kind;
    const auto line = [](bool spinner, std::string_view text, TelegramTone tone) {
        return TelegramStatusLine{spinner, std::string(text), tone};
    };
    switch (phase().kind) {
    case Kind::idle:
        return std::nullopt;
    case Kind::working:
        return line(true, TelegramSettingsText::working, TelegramTone::ashDim);
    case Kind::verified:
        return line(false, TelegramSettingsText::verified, TelegramTone::ashDim);
    case Kind::linked:
        return line(false, TelegramSettingsText::linked, TelegramTone::ashDim);
    case Kind::testSent:
        return line(false, TelegramSettingsText::testSent, TelegramTone::ember);
    case Kind::failed:
        break;
    }
    return line(false, phase().message, TelegramTone::waitingRed);
}

} // namespace tovrin
