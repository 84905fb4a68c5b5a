#include "ui/viewmodels/ToolIconSources.h"

#include <map>

namespace tovrin::ToolIconSources {

namespace {

// A rounded hexagon ring around a forward chevron: a plain mark of our own, drawn with one path
// whose even-odd fill leaves the ring hollow.
constexpr std::string_view hexagonPromptMark =
    R"(<svg xmlns="http://www.w3.org/2000/svg" viewBox="0 0 24 24">)"
    R"(<path fill="#000" fill-rule="evenodd" d="M12 1.5 L21.1 6.75 L21.1 17.25 L12 22.5 L2.9 17.25 L2.9 6.75 Z )"
    R"(M12 4.1 L4.9 8.2 L4.9 15.8 L12 19.9 L19.1 15.8 L19.1 8.2 Z )"
    R"(M8.2 8.6 L9.6 7.2 L14.4 12 L9.6 16.8 L8.2 15.4 L11.6 12 Z )"
    R"(M13.2 15.3 L16.6 15.3 L16.6 17 L13.2 17 Z"/></svg>)";

} // namespace

std::filesystem::path overrideFolder(const std::filesystem::path& home) {
    return home / ".tovrin" / "icons";
}

std::vector<std::filesystem::path> overrideCandidates(const std::filesystem::path& folder,
                                                      std::string_view tool) {
    static constexpr std::string_view extensions[] = {"png", "svg", "jpg", "jpeg"};
    std::vector<std::filesystem::path> candidates;
    // A tool id that could climb out of the folder names no file there.
    if (tool.empty() || tool.find('/') != std::string_view::npos || tool == "." || tool == "..")
        return candidates;
    for (std::string_view extension : extensions)
        candidates.push_back(folder / (std::string(tool) + "." + std::string(extension)));
    return candidates;
}

const std::vector<std::string>& desktopIds(std::string_view tool) {
    static const std::map<std::string, std::vector<std::string>, std::less<>> table{
        {"claude-code", {"claude-desktop", "claude"}},
        {"cursor-cli", {"cursor"}},
        {"cursor-ide", {"cursor"}},
        {"copilot-vscode", {"code", "code-insiders", "vscodium"}},
        {"antigravity-cli", {"antigravity"}},
        {"antigravity-ide", {"antigravity"}},
    };
    static const std::vector<std::string> none;
    const auto found = table.find(tool);
    return found == table.end() ? none : found->second;
}

std::string_view brandLogoSvg(std::string_view tool) {
    return tool == "codex-cli" ? hexagonPromptMark : std::string_view();
}

} // namespace tovrin::ToolIconSources
