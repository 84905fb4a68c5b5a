#include "services/update/Ed25519Key.h"

#include <algorithm>
#include <memory>
#include <openssl/evp.h>

namespace tovrin {
namespace {

constexpr std::size_t signatureSize = 64;

bool isBase64Character(char c) {
    return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || (c >= '0' && c <= '9') || c == '+' || c == '/';
}

} // namespace

std::optional<std::string> decodeBase64(std::string_view text) {
    if (text.empty() || text.size() % 4 != 0) return std::nullopt;
    const std::size_t padding = text.ends_with("==") ? 2 : text.ends_with('=') ? 1 : 0;
    // OpenSSL's decoder also skips whitespace and reads '=' anywhere; a signature has neither.
    if (!std::all_of(text.begin(), text.end() - static_cast<std::ptrdiff_t>(padding), isBase64Character))
        return std::nullopt;
    std::string bytes(text.size() / 4 * 3, '\0');
    const int size =
        EVP_DecodeBlock(reinterpret_cast<unsigned char*>(bytes.data()),
                        reinterpret_cast<const unsigned char*>(text.data()), static_cast<int>(text.size()));
    if (size < 0 || static_cast<std::size_t>(size) != bytes.size()) return std::nullopt;
    bytes.resize(bytes.size() - padding);
    return bytes;
}

std::optional<Ed25519Key> Ed25519Key::fromBase64(std::string_view text) {
    const auto raw = decodeBase64(text);
    Ed25519Key key;
    if (!raw || raw->size() != key.m_raw.size()) return std::nullopt;
    std::copy(raw->begin(), raw->end(), key.m_raw.begin());
    return key;
}

bool Ed25519Key::verifies(std::string_view signature, std::string_view message) const {
    const auto bytes = decodeBase64(signature);
    if (!bytes || bytes->size() != signatureSize) return false;
    const std::unique_ptr<EVP_PKEY, decltype(&EVP_PKEY_free)> key(
        EVP_PKEY_new_raw_public_key(EVP_PKEY_ED25519, nullptr, m_raw.data(), m_raw.size()), EVP_PKEY_free);
    const std::unique_ptr<EVP_MD_CTX, decltype(&EVP_MD_CTX_free)> context(EVP_MD_CTX_new(), EVP_MD_CTX_free);
    if (!key || !context) return false;
    // Ed25519 signs the message itself, not a digest of it: no digest is named.
    if (EVP_DigestVerifyInit(context.get(), nullptr, nullptr, nullptr, key.get()) != 1) return false;
    return EVP_DigestVerify(context.get(), reinterpret_cast<const unsigned char*>(bytes->data()),
                            bytes->size(), reinterpret_cast<const unsigned char*>(message.data()),
                            message.size()) == 1;
}

} // namespace tovrin
