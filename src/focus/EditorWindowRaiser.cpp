#include "focus/EditorWindowRaiser.h"

#include "core/AsciiText.h"
#include "core/UserPaths.h"
#include "core/Utf8.h"

#include <algorithm>
#include <array>
#include <filesystem>

namespace tovrin {

namespace {

// WM_CLASS values from the editors' desktop files (StartupWMClass); the instance names are
// the fallback for builds that set another class.
struct KnownEditor {
    std::string_view id;
    std::string_view tool;
    std::string_view locatorApp;
    std::array<std::string_view, 3> classNames;
    std::string_view fallbackInstance;
    std::string_view activationName; // a desktop entry Name=, so that it can be started too
};

constexpr std::array<KnownEditor, 3> editors{{
    {"cursor", "cursor-ide", "Cursor", {"Cursor"}, "cursor", "Cursor"},
    {"vscode",
     "copilot-vscode",
     "VS Code",
     {"Code", "Code - Insiders", "VSCodium"},
     "code",
     "Visual Studio Code"},
    {"antigravity", "antigravity-ide", "Antigravity", {"Antigravity"}, "antigravity", "Antigravity"},
}};

Editor editorFrom(const KnownEditor& known) {
    return {std::string(known.id), std::string(known.activationName)};
}

// Simple case folding: ASCII, Latin-1, Latin Extended-A, Greek and Cyrillic capitals, which
// covers folder names in practice without a Unicode table.
char32_t foldCase(char32_t c) {
    if ((c >= U'A' && c <= U'Z') || (c >= 0xC0 && c <= 0xDE && c != 0xD7) || (c >= 0x391 && c <= 0x3AB) ||
        (c >= 0x410 && c <= 0x42F))
        return c + 0x20;
    if (c >= 0x400 && c <= 0x40F) return c + 0x50;
    if (c >= 0x100 && c <= 0x17E) {
        if (c == 0x178) return 0xFF;
        // Pairs of capital and small letter; the capital sits on even code points except
        // between U+0139 and U+0148 and from U+0179 on.
        const bool capitalEven = c < 0x138 || (c >= 0x14A && c < 0x178);
        if (c != 0x130 && c != 0x138 && c != 0x149 && (c % 2 == 0) == capitalEven) return c + 1;
    }
    return c;
}

bool equalIgnoringCase(std::string_view a, std::string_view b) {
    std::size_t i = 0, j = 0;
    while (i < a.size() && j < b.size())
        if (foldCase(Utf8::next(a, i)) != foldCase(Utf8::next(b, j))) return false;
    return i == a.size() && j == b.size();
}

// A path with a leading tilde expanded and without ".", "..", repeated or trailing slashes.
std::string standardized(std::string_view path, std::string_view home) {
    std::string expanded(path);
    if (expanded == "~" || expanded.starts_with("~/")) expanded = std::string(home) + expanded.substr(1);
    std::string normal = std::filesystem::path(expanded).lexically_normal().generic_string();
    while (normal.size() > 1 && normal.back() == '/')
        normal.pop_back();
    return normal;
}

} // namespace

EditorWindowRaiser::EditorWindowRaiser(WindowSystem& windows, std::optional<std::string> home)
    : m_windows(windows), m_home(home ? std::move(*home) : UserPaths::home().string()) {}

std::optional<Editor> EditorWindowRaiser::editor(const AgentSession& session) const {
    for (const KnownEditor& known : editors)
        if (session.tool == known.tool) return editorFrom(known);
    if (session.locator && session.locator->app) {
        for (const KnownEditor& known : editors)
            if (*session.locator->app == known.locatorApp) return editorFrom(known);
    }
    return std::nullopt;
}

std::vector<WindowInfo> EditorWindowRaiser::editorWindows(const std::string& editorId) const {
    const auto known = std::ranges::find(editors, editorId, &KnownEditor::id);
    if (known == editors.end()) return {};
    const std::vector<WindowInfo> all = m_windows.normalWindows();
    // Every variant's windows together (VS Code and VSCodium alike): the session may sit in any.
    std::vector<WindowInfo> found;
    for (const WindowInfo& window : all)
        if (std::ranges::find(known->classNames, window.className) != known->classNames.end())
            found.push_back(window);
    if (!found.empty()) return found;
    for (const WindowInfo& window : all)
        if (window.classInstance == known->fallbackInstance) found.push_back(window);
    return found;
}

bool EditorWindowRaiser::raiseWindow(const Editor& editor, const std::string& cwd) {
    if (!m_windows.available()) return false;
    const std::vector<WindowInfo> windows = editorWindows(editor.id);
    std::vector<std::string> titles;
    titles.reserve(windows.size());
    for (const WindowInfo& window : windows)
        titles.push_back(window.title);
    const auto best = bestMatch(titles, cwd, m_home);
    if (!best) return false;
    // The window was there a moment ago; a failed request means it has just gone.
    return m_windows.activate(windows[*best].id);
}

std::vector<std::string> EditorWindowRaiser::workspaceCandidates(std::string_view cwd,
                                                                 std::string_view home) {
    const std::string stopAt = standardized(home, home);
    std::string path = standardized(cwd, home);
    std::vector<std::string> candidates;
    while (path.size() >= 2 && path != stopAt && path != "/") {
        const auto slash = path.rfind('/');
        if (slash == std::string::npos) {
            candidates.push_back(path);
            break;
        }
        if (slash + 1 < path.size()) candidates.push_back(path.substr(slash + 1));
        path.resize(slash == 0 ? 1 : slash);
    }
    return candidates;
}

std::vector<std::string> EditorWindowRaiser::titleSegments(std::string_view title) {
    std::vector<std::string> pieces{std::string(title)};
    for (std::string_view separator : {" \u2014 ", " \u2013 ", " - "}) {
        std::vector<std::string> split;
        for (const std::string& piece : pieces) {
            std::size_t start = 0;
            for (auto at = piece.find(separator); at != std::string::npos;
                 at = piece.find(separator, start)) {
                split.push_back(piece.substr(start, at - start));
                start = at + separator.size();
            }
            split.push_back(piece.substr(start));
        }
        pieces = std::move(split);
    }
    std::vector<std::string> segments;
    for (const std::string& piece : pieces) {
        const std::string_view segment = AsciiText::trimmed(piece, " \t");
        if (!segment.empty()) segments.emplace_back(segment);
    }
    return segments;
}

std::optional<std::size_t> EditorWindowRaiser::bestMatch(const std::vector<std::string>& titles,
                                                         std::string_view cwd, std::string_view home) {
    std::vector<std::vector<std::string>> segments;
    segments.reserve(titles.size());
    for (const std::string& title : titles)
        segments.push_back(titleSegments(title));
    for (const std::string& candidate : workspaceCandidates(cwd, home)) {
        for (std::size_t i = 0; i < segments.size(); ++i) {
            if (std::ranges::any_of(segments[i],
                                    [&](const std::string& s) { return equalIgnoringCase(s, candidate); }))
                return i;
        }
    }
    return std::nullopt;
}

} // namespace tovrin
