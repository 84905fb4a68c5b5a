#include "core/Uuid.h"

#include <array>
#include <cstdint>
#include <random>

namespace tovrin {

std::string randomUuidString() {
    thread_local std::random_device source;
    std::array<std::uint8_t, 16> bytes{};
    for (std::size_t i = 0; i < bytes.size(); i += 4) {
        const auto word = source();
        for (std::size_t b = 0; b < 4; ++b)
            bytes[i + b] = static_cast<std::uint8_t>(word >> (8 * b));
    }
    bytes[6] = static_cast<std::uint8_t>((bytes[6] & 0x0f) | 0x40); // version 4
    bytes[8] = static_cast<std::uint8_t>((bytes[8] & 0x3f) | 0x80); // RFC 4122 variant

    static constexpr char hex[] = "0123456789ABCDEF";
    std::string text;
    text.reserve(36);
    for (std::size_t i = 0; i < bytes.size(); ++i) {
        if (i == 4 || i == 6 || i == 8 || i == 10) text += '-';
        text += hex[bytes[i] >> 4];
        text += hex[bytes[i] & 0x0f];
    }
    return text;
}

} // namespace tovrin
