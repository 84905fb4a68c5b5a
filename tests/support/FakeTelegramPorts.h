#pragma once

#include "alerts/telegram/SecretStoring.h"
#include "alerts/telegram/TelegramMessaging.h"

#include <map>
#include <string>
#include <variant>
#include <vector>

namespace tovrin::test {

// Keeps secrets in a map; storing no value or an empty one removes the key.
class MemorySecrets final : public SecretStoring {
public:
    std::optional<std::string> string(const std::string& key) const override {
        const auto it = values.find(key);
        return it == values.end() ? std::nullopt : std::optional(it->second);
    }
    void set(const std::optional<std::string>& value, const std::string& key) override {
        if (value && !value->empty())
            values[key] = *value;
        else
            values.erase(key);
    }

    std::map<std::string, std::string> values;
};

// Keeps each call with its completion, so the test decides when and how it ends.
class FakeMessenger final : public TelegramMessaging {
public:
    struct Call {
        std::string operation;
        std::string token;
        std::string chatID;
        std::string text;
        std::variant<Completion<std::string>, Completion<TelegramChat>, Completion<void>> completion;
    };

    void verifyBot(const std::string& token, Completion<std::string> completion) override {
        calls.push_back({"verifyBot", token, {}, {}, std::move(completion)});
    }
    void discoverChat(const std::string& token, Completion<TelegramChat> completion) override {
        calls.push_back({"discoverChat", token, {}, {}, std::move(completion)});
    }
    void sendMessage(const std::string& token, const std::string& chatID, const std::string& text,
                     Completion<void> completion) override {
        calls.push_back({"sendMessage", token, chatID, text, std::move(completion)});
    }

    // Ends the last call with a result of its own type, or with `error`.
    template <class T> void succeed(T value) {
        std::get<Completion<T>>(calls.back().completion)(std::move(value));
    }
    void succeedSending() { std::get<Completion<void>>(calls.back().completion)({}); }
    void fail(const TelegramError& error) {
        std::visit([&](auto& completion) { failWith(completion, error); }, calls.back().completion);
    }

    std::vector<Call> calls;

private:
    template <class T> static void failWith(Completion<T>& completion, const TelegramError& error) {
        completion(Result<T, TelegramError>::failure(error));
    }
};

} // namespace tovrin::test
