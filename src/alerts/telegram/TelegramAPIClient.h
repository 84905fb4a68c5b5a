#pragma once

#include "alerts/telegram/TelegramMessaging.h"
#include "core/HttpClient.h"
#include "core/MainLoop.h"

#include <functional>
#include <optional>
#include <string>
#include <string_view>

namespace tovrin {

// Speaks to the Telegram Bot API: one HTTP request per call, no retry, no state between calls.
// Whatever fails, the token never appears in an error's text. Main loop only.
class TelegramAPIClient final : public TelegramMessaging {
public:
    static constexpr std::string_view productionBaseUrl = "https://api.telegram.org";
    static constexpr Seconds requestTimeout{60};

    // Tests point `baseUrl` at a local server; production keeps the constant. The loop carries
    // the answer to a call that could not even be sent, so that every answer comes later.
    TelegramAPIClient(HttpClient& http, MainLoop& loop, std::string baseUrl = std::string(productionBaseUrl),
                      Seconds timeout = requestTimeout);

    void verifyBot(const std::string& token, Completion<std::string> completion) override;
    void discoverChat(const std::string& token, Completion<TelegramChat> completion) override;
    void sendMessage(const std::string& token, const std::string& chatID, const std::string& text,
                     Completion<void> completion) override;

    // {"chat_id": "<id>", "text": "<text>"}, both strings; empty if the text can't be encoded.
    static std::string sendMessageBody(const std::string& chatID, const std::string& text);

private:
    // Sends one request; `answer` gets the HTTP outcome, or nothing when no URL could be made.
    void call(const std::string& token, const std::string& method, std::optional<std::string> body,
              std::function<void(const std::optional<HttpResult>&)> answer);

    HttpClient& m_http;
    MainLoop& m_loop;
    std::string m_baseUrl;
    Seconds m_timeout;
};

} // namespace tovrin
