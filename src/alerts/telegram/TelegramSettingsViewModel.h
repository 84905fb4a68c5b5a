#pragma once

#include "alerts/telegram/SecretStoring.h"
#include "alerts/telegram/TelegramMessaging.h"
#include "core/PreferencesStore.h"
#include "core/Property.h"
#include "core/Signal.h"

#include <array>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace tovrin {

// The words of the Telegram section, shared by the settings window and the terminal.
namespace TelegramSettingsText {
inline constexpr std::string_view toggle = "Send a Telegram message when an agent starts waiting";
inline constexpr std::string_view setupDisclosure = "How do I set this up?";
inline constexpr std::array<std::string_view, 5> setupSteps = {
    "In Telegram, open @BotFather (the account with the blue checkmark).",
    "Send /newbot, then pick a name and a username ending in “bot”.",
    "Copy the token it replies with — it looks like 123456789:AA….",
    "Paste the token above and tap Verify token.",
    "Message your new bot once, then tap Link chat and Send test.",
};
inline constexpr std::string_view botFatherLink = "Open @BotFather in Telegram";
inline constexpr std::string_view botFatherLinkGlyph = "arrow.up.right.square";
inline constexpr std::string_view botFatherUrl = "https://t.me/botfather";
inline constexpr std::string_view tokenField = "Bot token";
inline constexpr std::string_view verifyButton = "Verify token";
inline constexpr std::string_view linkButton = "Link chat";
inline constexpr std::string_view testButton = "Send test";
inline constexpr std::string_view testMessage =
    "Tovrin is connected — you'll be pinged here when an agent is waiting.";
inline constexpr std::string_view working = "Working…";
inline constexpr std::string_view verified = "Token verified.";
inline constexpr std::string_view linked = "Chat linked.";
inline constexpr std::string_view testSent = "Test message sent.";
// Stands for the linked chat after a restart, when only its id is known.
std::string chatLabel(const std::string& chatID);
} // namespace TelegramSettingsText

// Tones of the theme that the section uses; the view maps them to colours.
enum class TelegramTone { ashDim, ember, waitingRed };

struct TelegramStatusLine {
    bool spinner = false;
    std::string text;
    TelegramTone tone = TelegramTone::ashDim;
    bool operator==(const TelegramStatusLine&) const = default;
};

// The model of the Telegram section: verify the pasted token, link the chat the user wrote
// from, send a test. The buttons enable in that order; each action ends in `phase`, never in
// an error of its own. Only one action runs at a time, which the disabled buttons ensure.
// Main loop only.
class TelegramSettingsViewModel {
public:
    struct Phase {
        enum class Kind { failed, idle, working, verified, linked, testSent };
        Kind kind = Kind::idle;
        std::string message; // what failed, for `failed` only

        static Phase failed(std::string message) { return {Kind::failed, std::move(message)}; }
        static Phase of(Kind kind) { return {kind, {}}; }
        bool operator==(const Phase&) const = default;
    };

    TelegramSettingsViewModel(TelegramMessaging& messenger, SecretStoring& secrets,
                              PreferencesStore& preferences);
    TelegramSettingsViewModel(const TelegramSettingsViewModel&) = delete;
    TelegramSettingsViewModel& operator=(const TelegramSettingsViewModel&) = delete;

    Signal<> objectWillChange;
    Property<std::string> botToken;                       // the token field's text, as typed
    Property<std::optional<std::string>> botUsername;     // set only by a verification in this run
    Property<std::optional<std::string>> linkedChatLabel; // the chat's name, or "Chat <id>" after load
    Property<Phase> phase;

    // Each time the section appears: the stored token into the field, and a stored chat as linked.
    void load();
    void verify();
    void linkChat();
    void sendTest();

    bool tokenFieldEnabled() const;
    bool verifyEnabled() const;
    bool linkChatEnabled() const;
    bool sendTestEnabled() const;
    // Nothing while idle.
    std::optional<TelegramStatusLine> statusLine() const;

private:
    template <class F> auto whileAlive(F fn);

    TelegramMessaging& m_messenger;
    SecretStoring& m_secrets;
    PreferencesStore& m_preferences;
    // Answers that arrive after the model is gone find this expired and do nothing.
    std::shared_ptr<const char> m_alive = std::make_shared<const char>('\0');
};

} // namespace tovrin
