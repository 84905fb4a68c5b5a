#pragma once

#include <string>
#include <string_view>

// Helpers for machine-written text (key files, environment values, command output), where only
// ASCII blanks and letters matter; text a person wrote goes through Utf8 instead.
namespace tovrin::AsciiText {

inline constexpr std::string_view blanks = " \t\r\n\f\v";

inline std::string_view trimmed(std::string_view text, std::string_view strip = blanks) {
    const auto begin = text.find_first_not_of(strip);
    if (begin == std::string_view::npos) return {};
    return text.substr(begin, text.find_last_not_of(strip) - begin + 1);
}

inline std::string lowercased(std::string_view text) {
    std::string lower(text);
    for (char& c : lower)
        if (c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
    return lower;
}

} // namespace tovrin::AsciiText
