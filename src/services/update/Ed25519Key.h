#pragma once

#include <array>
#include <optional>
#include <string>
#include <string_view>

namespace tovrin {

// The standard base64 alphabet with padding; nothing for any other text (whitespace included).
std::optional<std::string> decodeBase64(std::string_view text);

// An Ed25519 public key, which tells whether a signature was made with its private half.
class Ed25519Key {
public:
    // From the base64 of the raw 32-byte key; nothing for anything else.
    static std::optional<Ed25519Key> fromBase64(std::string_view text);

    // Whether `signature` (the base64 of 64 bytes) signs exactly `message`. A malformed signature
    // signs nothing.
    bool verifies(std::string_view signature, std::string_view message) const;

private:
    Ed25519Key() = default;
    std::array<unsigned char, 32> m_raw{};
};

} // namespace tovrin
