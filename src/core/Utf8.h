#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace tovrin::Utf8 {

inline constexpr char32_t replacement = 0xFFFD;

// Decodes the code point at `pos` and advances `pos`; an invalid or cut sequence yields
// U+FFFD and advances by one byte.
char32_t next(std::string_view text, std::size_t& pos);
void append(std::string& out, char32_t codePoint);
// The text with every invalid sequence replaced by U+FFFD.
std::string sanitized(std::string_view bytes);

// Unicode classes that text heuristics need.
bool isNewline(char32_t c);        // U+000A..U+000D, U+0085, U+2028, U+2029
bool isSpaceSeparator(char32_t c); // class Zs
bool isWhitespace(char32_t c);     // White_Space: Zs, tab, newlines
bool isNumber(char32_t c);         // classes Nd, Nl, No

// `text` without leading and trailing characters for which `strip` is true.
template <class Predicate> std::string_view trim(std::string_view text, Predicate strip) {
    std::size_t begin = 0;
    while (begin < text.size()) {
        std::size_t pos = begin;
        if (!strip(next(text, pos))) break;
        begin = pos;
    }
    std::size_t end = begin;
    for (std::size_t pos = begin; pos < text.size();) {
        const bool stripped = strip(next(text, pos));
        if (!stripped) end = pos;
    }
    return text.substr(begin, end - begin);
}

} // namespace tovrin::Utf8
