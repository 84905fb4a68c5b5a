#include "sessions/AntigravityWaitingInspector.h"

#include "core/AsciiText.h"
#include "core/FileDescriptor.h"
#include "core/Utf8.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <fcntl.h>
#include <nlohmann/json.hpp>
#include <sys/stat.h>
#include <unistd.h>

namespace tovrin {
namespace {

constexpr std::array<std::string_view, 11> askingPhrases{
    "would you", "do you want", "should i",       "let me know",         "pick one",     "select one",
    "your call", "which ",      "choose between", "options to consider", "your options",
};

bool isBlank(char32_t c) {
    return c == '\t' || Utf8::isSpaceSeparator(c);
}

std::string_view trimBlanks(std::string_view text) {
    return Utf8::trim(text, isBlank);
}

} // namespace

std::optional<std::string> AntigravityWaitingInspector::readTail(const std::string& path,
                                                                 std::size_t maxBytes) {
    const FileDescriptor fd(::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY));
    if (!fd.valid()) return std::nullopt;

    const off_t size = ::lseek(fd.get(), 0, SEEK_END);
    if (size < 0) return std::nullopt;
    const off_t start = static_cast<std::size_t>(size) > maxBytes ? size - static_cast<off_t>(maxBytes) : 0;
    (void)::lseek(fd.get(), start, SEEK_SET);

    std::string bytes;
    if (!fd.readAppending(bytes, maxBytes) || bytes.empty()) return std::nullopt;
    return Utf8::sanitized(bytes);
}

std::vector<std::string_view> AntigravityWaitingInspector::splitLines(std::string_view text) {
    std::vector<std::string_view> lines;
    std::size_t lineStart = 0;
    for (std::size_t pos = 0; pos < text.size();) {
        const std::size_t at = pos;
        const char32_t c = Utf8::next(text, pos);
        if (!Utf8::isNewline(c)) continue;
        if (at > lineStart) lines.push_back(text.substr(lineStart, at - lineStart));
        if (c == '\r' && pos < text.size() && text[pos] == '\n') ++pos;
        lineStart = pos;
    }
    if (lineStart < text.size()) lines.push_back(text.substr(lineStart));
    return lines;
}

std::optional<std::string> AntigravityWaitingInspector::lastPlannerMessage(std::string_view jsonl) {
    std::optional<std::string> last;
    for (const auto line : splitLines(jsonl)) {
        const auto entry = nlohmann::json::parse(line, nullptr, /*allow_exceptions=*/false);
        if (!entry.is_object()) continue;
        const auto type = entry.find("type");
        if (type == entry.end() || !type->is_string() ||
            type->get_ref<const std::string&>() != "PLANNER_RESPONSE")
            continue;
        const auto content = entry.find("content");
        if (content == entry.end() || !content->is_string()) continue;
        const auto& text = content->get_ref<const std::string&>();
        if (Utf8::trim(text, Utf8::isWhitespace).empty()) continue;
        last = text;
    }
    return last;
}

bool AntigravityWaitingInspector::isOptionLine(std::string_view line) {
    const std::string_view trimmed = trimBlanks(line);
    if (trimmed.empty()) return false;

    std::string_view rest;
    const char first = trimmed.front();
    if (first == '-' || first == '*' || first == '+') {
        rest = trimmed.substr(1);
    } else {
        std::size_t pos = 0;
        std::size_t afterNumber = 0;
        while (pos < trimmed.size()) {
            std::size_t next = pos;
            if (!Utf8::isNumber(Utf8::next(trimmed, next))) break;
            pos = afterNumber = next;
        }
        if (afterNumber == 0 || afterNumber >= trimmed.size()) return false;
        if (trimmed[afterNumber] != '.' && trimmed[afterNumber] != ')') return false;
        rest = trimmed.substr(afterNumber + 1);
    }
    // "Begins with a blank": a space separator or a tab.
    if (rest.empty()) return false;
    std::size_t pos = 0;
    return isBlank(Utf8::next(rest, pos));
}

std::optional<std::string>
AntigravityWaitingInspector::lastMeaningfulLine(const std::vector<std::string_view>& lines) {
    for (auto it = lines.rbegin(); it != lines.rend(); ++it) {
        const std::string_view trimmed = trimBlanks(*it);
        if (trimmed.empty() || isOptionLine(trimmed)) continue;
        return std::string(trimmed);
    }
    return std::nullopt;
}

bool AntigravityWaitingInspector::looksLikeQuestion(std::string_view message) {
    const auto lines = splitLines(message);
    if (const auto line = lastMeaningfulLine(lines); line && line->find('?') != std::string::npos)
        return true;
    const auto options =
        std::count_if(lines.begin(), lines.end(), [](std::string_view l) { return isOptionLine(l); });
    if (options < 2) return false;
    const std::string lowered = AsciiText::lowercased(message);
    return std::any_of(askingPhrases.begin(), askingPhrases.end(),
                       [&](std::string_view phrase) { return lowered.find(phrase) != std::string::npos; });
}

} // namespace tovrin
