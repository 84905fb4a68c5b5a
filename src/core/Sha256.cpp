#include "core/Sha256.h"

#include <array>
#include <openssl/evp.h>

namespace tovrin {

std::string sha256Hex(std::string_view bytes) {
    std::array<unsigned char, EVP_MAX_MD_SIZE> digest{};
    unsigned int length = 0;
    // One-shot digest into a stack buffer: the only failure is an out-of-memory context.
    if (EVP_Digest(bytes.data(), bytes.size(), digest.data(), &length, EVP_sha256(), nullptr) != 1) return {};
    static constexpr char hex[] = "0123456789abcdef";
    std::string text;
    text.reserve(length * 2);
    for (unsigned int i = 0; i < length; ++i) {
        text += hex[digest[i] >> 4];
        text += hex[digest[i] & 0x0f];
    }
    return text;
}

} // namespace tovrin
