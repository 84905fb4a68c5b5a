#include "ui/viewmodels/MotionPreference.h"

#include "core/AsciiText.h"

#include <algorithm>
#include <cctype>
#include <stdexcept>
#include <string>

namespace tovrin::MotionPreference {

namespace {} // namespace

std::optional<bool> fromOverride(std::string_view value) {
    const std::string word = AsciiText::lowercased(AsciiText::trimmed(value));
    if (word == "1" || word == "true" || word == "yes" || word == "on") return true;
    if (word == "0" || word == "false" || word == "no" || word == "off") return false;
    return std::nullopt;
}

std::optional<bool> fromGnomeAnimations(std::string_view output) {
    const std::string_view answer = AsciiText::trimmed(output);
    if (answer == "false") return true;
    if (answer == "true") return false;
    return std::nullopt;
}

std::optional<bool> fromKdeGlobals(std::string_view text) {
    bool inKdeGroup = false;
    while (!text.empty()) {
        const size_t end = text.find('\n');
        const std::string_view line = AsciiText::trimmed(text.substr(0, end));
        text = end == std::string_view::npos ? std::string_view() : text.substr(end + 1);
        if (line.starts_with('[')) {
            inKdeGroup = line == "[KDE]";
            continue;
        }
        if (!inKdeGroup) continue;
        const size_t equals = line.find('=');
        if (equals == std::string_view::npos ||
            AsciiText::trimmed(line.substr(0, equals)) != "AnimationDurationFactor")
            continue;
        const std::string value(AsciiText::trimmed(line.substr(equals + 1)));
        try {
            size_t used = 0;
            const double factor = std::stod(value, &used);
            if (used != value.size()) return std::nullopt;
            return factor == 0;
        } catch (const std::exception&) {
            return std::nullopt;
        }
    }
    return std::nullopt;
}

bool decide(std::optional<bool> override, std::optional<bool> kde, std::optional<bool> gnome) {
    if (override) return *override;
    if (kde) return *kde;
    return gnome.value_or(false);
}

} // namespace tovrin::MotionPreference
