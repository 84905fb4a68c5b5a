#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace tovrin {

// Keyed strings kept out of the settings file. Reads and writes never report a failure: a value
// that can't be read is absent, and a write that fails leaves what was stored before.
class SecretStoring {
public:
    virtual ~SecretStoring() = default;
    virtual std::optional<std::string> string(const std::string& key) const = 0;
    // An absent or empty value removes the key.
    virtual void set(const std::optional<std::string>& value, const std::string& key) = 0;
};

// The keys under which Telegram's two values are kept.
namespace TelegramSecretKeys {
inline const std::string botToken = "telegram.botToken";
inline const std::string chatID = "telegram.chatID"; // the chat's id in plain decimal
} // namespace TelegramSecretKeys

} // namespace tovrin
