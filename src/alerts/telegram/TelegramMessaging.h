#pragma once

#include "alerts/telegram/TelegramError.h"
#include "core/Result.h"

#include <cstdint>
#include <functional>
#include <optional>
#include <string>

namespace tovrin {

// A chat as the Bot API reports it.
struct TelegramChat {
    std::int64_t id = 0; // negative for groups
    std::optional<std::string> title;
    std::optional<std::string> firstName;
    std::optional<std::string> username;

    // Title, else first name, else "@username", else the id. Presence decides, not emptiness.
    std::string displayName() const;
    bool operator==(const TelegramChat&) const = default;
};

// The three Bot API calls the application makes. Each starts a request and returns at once; the
// completion comes later on the main loop. The token and chat id are arguments: nothing is kept.
class TelegramMessaging {
public:
    template <class T> using Completion = std::function<void(Result<T, TelegramError>)>;

    virtual ~TelegramMessaging() = default;
    // A label for the bot: "@username", else its first name, else "bot".
    virtual void verifyBot(const std::string& token, Completion<std::string> completion) = 0;
    // The chat of the most recent update that carries a message.
    virtual void discoverChat(const std::string& token, Completion<TelegramChat> completion) = 0;
    virtual void sendMessage(const std::string& token, const std::string& chatID, const std::string& text,
                             Completion<void> completion) = 0;
};

} // namespace tovrin
