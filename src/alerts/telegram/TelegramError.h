#pragma once

#include <string>
#include <utility>

namespace tovrin {

// What a Telegram call can end in. The first four carry the words shown to the user; transport
// and decoding failures carry the transport's or decoder's own description, as it stands.
class TelegramError {
public:
    enum class Kind { api, noResponse, unauthorized, noChat, transport, decoding };

    TelegramError() = default;
    static TelegramError api(std::string message) { return {Kind::api, std::move(message)}; }
    static TelegramError noResponse() { return {Kind::noResponse, {}}; }
    static TelegramError unauthorized() { return {Kind::unauthorized, {}}; }
    static TelegramError noChat() { return {Kind::noChat, {}}; }
    static TelegramError transport(std::string description) {
        return {Kind::transport, std::move(description)};
    }
    static TelegramError decoding(std::string description) {
        return {Kind::decoding, std::move(description)};
    }

    Kind kind() const { return m_kind; }
    // The message of `api`, or the description of `transport` and `decoding`; else empty.
    const std::string& detail() const { return m_detail; }
    std::string description() const;

    bool operator==(const TelegramError&) const = default;

private:
    TelegramError(Kind kind, std::string detail) : m_kind(kind), m_detail(std::move(detail)) {}

    Kind m_kind = Kind::noResponse;
    std::string m_detail;
};

} // namespace tovrin
