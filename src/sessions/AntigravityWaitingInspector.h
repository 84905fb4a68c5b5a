#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tovrin {

// Decides from the tail of an Antigravity transcript whether a silent session is asking the
// user something. Stateless: every operation is a plain function of its arguments.
struct AntigravityWaitingInspector {
    static constexpr std::size_t tailBytes = 128 * 1024;

    // The last `maxBytes` of a file, decoded as UTF-8 with invalid sequences replaced;
    // nothing if the file cannot be read or the tail is empty.
    static std::optional<std::string> readTail(const std::string& path, std::size_t maxBytes);
    // The `content` of the last JSONL entry of type "PLANNER_RESPONSE" whose content is not blank.
    static std::optional<std::string> lastPlannerMessage(std::string_view jsonl);
    // A closing question, or a list of options offered with an asking phrase.
    static bool looksLikeQuestion(std::string_view message);

    // Lines split at every Unicode newline (CR LF counting as one), empty lines left out.
    static std::vector<std::string_view> splitLines(std::string_view text);
    static std::optional<std::string> lastMeaningfulLine(const std::vector<std::string_view>& lines);
    static bool isOptionLine(std::string_view line);
};

} // namespace tovrin
