#include "core/Utf8.h"

#include <algorithm>
#include <array>
#include <utility>

namespace tovrin::Utf8 {

char32_t next(std::string_view text, std::size_t& pos) {
    const auto byte = [&](std::size_t i) { return static_cast<unsigned char>(text[i]); };
    const unsigned char lead = byte(pos);
    std::size_t length = 0;
    char32_t cp = 0;
    char32_t minimum = 0;
    if (lead < 0x80) {
        ++pos;
        return lead;
    } else if ((lead & 0xE0) == 0xC0) {
        length = 2, cp = lead & 0x1F, minimum = 0x80;
    } else if ((lead & 0xF0) == 0xE0) {
        length = 3, cp = lead & 0x0F, minimum = 0x800;
    } else if ((lead & 0xF8) == 0xF0) {
        length = 4, cp = lead & 0x07, minimum = 0x10000;
    } else {
        ++pos;
        return replacement;
    }
    if (pos + length > text.size()) {
        ++pos;
        return replacement;
    }
    for (std::size_t i = 1; i < length; ++i) {
        if ((byte(pos + i) & 0xC0) != 0x80) {
            ++pos;
            return replacement;
        }
        cp = (cp << 6) | (byte(pos + i) & 0x3F);
    }
    if (cp < minimum || cp > 0x10FFFF || (cp >= 0xD800 && cp <= 0xDFFF)) {
        ++pos;
        return replacement;
    }
    pos += length;
    return cp;
}

void append(std::string& out, char32_t c) {
    if (c < 0x80) {
        out += static_cast<char>(c);
    } else if (c < 0x800) {
        out += static_cast<char>(0xC0 | (c >> 6));
        out += static_cast<char>(0x80 | (c & 0x3F));
    } else if (c < 0x10000) {
        out += static_cast<char>(0xE0 | (c >> 12));
        out += static_cast<char>(0x80 | ((c >> 6) & 0x3F));
        out += static_cast<char>(0x80 | (c & 0x3F));
    } else {
        out += static_cast<char>(0xF0 | (c >> 18));
        out += static_cast<char>(0x80 | ((c >> 12) & 0x3F));
        out += static_cast<char>(0x80 | ((c >> 6) & 0x3F));
        out += static_cast<char>(0x80 | (c & 0x3F));
    }
}

std::string sanitized(std::string_view bytes) {
    std::string out;
    out.reserve(bytes.size());
    for (std::size_t pos = 0; pos < bytes.size();) {
        const std::size_t start = pos;
        const char32_t c = next(bytes, pos);
        if (c == replacement && !(pos - start == 3 && bytes.substr(start, 3) == "\xEF\xBF\xBD")) {
            append(out, replacement);
        } else {
            out.append(bytes.substr(start, pos - start));
        }
    }
    return out;
}

bool isNewline(char32_t c) {
    return (c >= 0x0A && c <= 0x0D) || c == 0x85 || c == 0x2028 || c == 0x2029;
}

bool isSpaceSeparator(char32_t c) {
    return c == 0x20 || c == 0xA0 || c == 0x1680 || (c >= 0x2000 && c <= 0x200A) || c == 0x202F ||
           c == 0x205F || c == 0x3000;
}

bool isWhitespace(char32_t c) {
    return c == '\t' || isSpaceSeparator(c) || isNewline(c);
}

bool isNumber(char32_t c) {
    // Decimal digits (Nd) of the scripts in use, then the common letter-like and other numbers.
    static constexpr std::array<std::pair<char32_t, char32_t>, 71> ranges{{
        {0x30, 0x39},       {0xB2, 0xB3},       {0xB9, 0xB9},       {0xBC, 0xBE},       {0x660, 0x669},
        {0x6F0, 0x6F9},     {0x7C0, 0x7C9},     {0x966, 0x96F},     {0x9E6, 0x9EF},     {0x9F4, 0x9F9},
        {0xA66, 0xA6F},     {0xAE6, 0xAEF},     {0xB66, 0xB6F},     {0xBE6, 0xBF2},     {0xC66, 0xC6F},
        {0xCE6, 0xCEF},     {0xD66, 0xD78},     {0xDE6, 0xDEF},     {0xE50, 0xE59},     {0xED0, 0xED9},
        {0xF20, 0xF33},     {0x1040, 0x1049},   {0x1090, 0x1099},   {0x1369, 0x137C},   {0x16EE, 0x16F0},
        {0x17E0, 0x17E9},   {0x17F0, 0x17F9},   {0x1810, 0x1819},   {0x1946, 0x194F},   {0x19D0, 0x19DA},
        {0x1A80, 0x1A89},   {0x1A90, 0x1A99},   {0x1B50, 0x1B59},   {0x1BB0, 0x1BB9},   {0x1C40, 0x1C49},
        {0x1C50, 0x1C59},   {0x2070, 0x2070},   {0x2074, 0x2079},   {0x2080, 0x2089},   {0x2150, 0x2182},
        {0x2185, 0x2189},   {0x2460, 0x249B},   {0x24EA, 0x24FF},   {0x2776, 0x2793},   {0x2CFD, 0x2CFD},
        {0x3007, 0x3007},   {0x3021, 0x3029},   {0x3038, 0x303A},   {0x3192, 0x3195},   {0x3220, 0x3229},
        {0x3248, 0x324F},   {0x3251, 0x325F},   {0x3280, 0x3289},   {0x32B1, 0x32BF},   {0xA620, 0xA629},
        {0xA6E6, 0xA6EF},   {0xA830, 0xA835},   {0xA8D0, 0xA8D9},   {0xA900, 0xA909},   {0xA9D0, 0xA9D9},
        {0xA9F0, 0xA9F9},   {0xAA50, 0xAA59},   {0xABF0, 0xABF9},   {0xFF10, 0xFF19},   {0x10107, 0x10133},
        {0x104A0, 0x104A9}, {0x11066, 0x1106F}, {0x1D7CE, 0x1D7FF}, {0x1E950, 0x1E959}, {0x1F100, 0x1F10C},
        {0x1FBF0, 0x1FBF9},
    }};
    return std::any_of(ranges.begin(), ranges.end(),
                       [c](const auto& r) { return c >= r.first && c <= r.second; });
}

} // namespace tovrin::Utf8
