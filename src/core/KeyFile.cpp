#include "core/KeyFile.h"

#include "core/AsciiText.h"

namespace tovrin::KeyFile {

Group group(std::string_view text, std::string_view name) {
    Group keys;
    bool inGroup = false;
    while (!text.empty()) {
        const auto end = text.find('\n');
        const std::string_view line = AsciiText::trimmed(text.substr(0, end));
        text = end == std::string_view::npos ? std::string_view{} : text.substr(end + 1);
        if (line.empty() || line.front() == '#') continue;
        if (line.front() == '[') {
            inGroup =
                line.size() == name.size() + 2 && line.back() == ']' && line.substr(1, name.size()) == name;
            continue;
        }
        const auto equals = line.find('=');
        if (!inGroup || equals == std::string_view::npos) continue;
        keys.insert_or_assign(std::string(AsciiText::trimmed(line.substr(0, equals))),
                              std::string(AsciiText::trimmed(line.substr(equals + 1))));
    }
    return keys;
}

std::optional<std::string> value(const Group& group, std::string_view key) {
    const auto found = group.find(key);
    if (found == group.end()) return std::nullopt;
    return found->second;
}

std::optional<bool> boolean(std::string_view value) {
    if (value == "true" || value == "1") return true;
    if (value == "false" || value == "0") return false;
    return std::nullopt;
}

} // namespace tovrin::KeyFile
