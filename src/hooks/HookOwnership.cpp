#include "hooks/HookOwnership.h"

#include <optional>
#include <string>

namespace tovrin {
namespace {

bool isBlank(char c) {
    return c == ' ' || c == '\t' || c == '\n';
}

// The first word of a POSIX shell command with its quotes and escapes taken off; nothing when
// the word is cut short by an unmatched quote.
std::optional<std::string> firstWord(std::string_view command) {
    std::size_t i = 0;
    while (i < command.size() && isBlank(command[i]))
        ++i;
    std::string word;
    while (i < command.size() && !isBlank(command[i])) {
        const char c = command[i++];
        if (c == '\'') {
            const auto end = command.find('\'', i);
            if (end == std::string_view::npos) return std::nullopt;
            word.append(command.substr(i, end - i));
            i = end + 1;
        } else if (c == '"') {
            for (;;) {
                if (i >= command.size()) return std::nullopt;
                const char inner = command[i++];
                if (inner == '"') break;
                // Inside double quotes a backslash escapes only these.
                if (inner == '\\' && i < command.size() &&
                    std::string_view("$`\"\\\n").find(command[i]) != std::string_view::npos) {
                    word += command[i++];
                } else {
                    word += inner;
                }
            }
        } else if (c == '\\') {
            if (i >= command.size()) return std::nullopt;
            word += command[i++];
        } else {
            word += c;
        }
    }
    return word;
}

} // namespace

bool HookOwnership::isOurCommand(std::string_view command) const {
    const auto word = firstWord(command);
    return word && !word->empty() && *word == m_writer.string();
}

} // namespace tovrin
