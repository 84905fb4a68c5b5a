#include "services/update/UpdateChoice.h"

#include <algorithm>
#include <charconv>
#include <cstdint>

namespace tovrin {
namespace {

std::optional<std::vector<std::uint64_t>> parseVersion(std::string_view text) {
    std::vector<std::uint64_t> parts;
    while (true) {
        const std::size_t dot = text.find('.');
        const std::string_view part = text.substr(0, dot);
        std::uint64_t number = 0;
        const auto [end, error] = std::from_chars(part.data(), part.data() + part.size(), number);
        if (part.empty() || error != std::errc() || end != part.data() + part.size()) return std::nullopt;
        parts.push_back(number);
        if (dot == std::string_view::npos) return parts;
        text.remove_prefix(dot + 1);
    }
}

int compare(const std::vector<std::uint64_t>& a, const std::vector<std::uint64_t>& b) {
    for (std::size_t i = 0; i < std::max(a.size(), b.size()); ++i) {
        const std::uint64_t x = i < a.size() ? a[i] : 0;
        const std::uint64_t y = i < b.size() ? b[i] : 0;
        if (x != y) return x < y ? -1 : 1;
    }
    return 0;
}

bool installable(const AppcastItem& item) {
    return !item.url.empty() && item.length && !item.signature.empty();
}

} // namespace

bool isNewerVersion(std::string_view candidate, std::string_view current) {
    const auto a = parseVersion(candidate);
    const auto b = parseVersion(current);
    return a && b && compare(*a, *b) > 0;
}

std::optional<AppcastItem> newestApplicable(const std::vector<AppcastItem>& items,
                                            std::string_view currentBuild, std::string_view skippedVersion) {
    const auto current = parseVersion(currentBuild);
    if (!current) return std::nullopt;
    // A skipped version that doesn't read as one (a hand-edited defaults file) hides nothing.
    const auto skipped = parseVersion(skippedVersion);
    const AppcastItem* newest = nullptr;
    std::vector<std::uint64_t> newestVersion;
    for (const AppcastItem& item : items) {
        const auto version = parseVersion(item.version);
        if (!version || !installable(item) || compare(*version, *current) <= 0) continue;
        if (skipped && compare(*version, *skipped) <= 0) continue;
        if (!newest || compare(*version, newestVersion) > 0) {
            newest = &item;
            newestVersion = *version;
        }
    }
    if (!newest) return std::nullopt;
    return *newest;
}

} // namespace tovrin
