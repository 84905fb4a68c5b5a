#pragma once

#include "focus/EditorRaising.h"
#include "focus/WindowSystem.h"

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tovrin {

// Finds the editor window that shows a session's project by its title: editors name the open
// folder in the title ("main.ts - proj - Visual Studio Code"), and the folder is one of those
// on the way up from the session's working directory.
class EditorWindowRaiser final : public EditorRaising {
public:
    // `home` bounds the walk up from a working directory; the user's home folder by default.
    explicit EditorWindowRaiser(WindowSystem& windows, std::optional<std::string> home = std::nullopt);

    // By the session's tool id first, then by the host application its locator names.
    std::optional<Editor> editor(const AgentSession& session) const override;
    // Raises the best-titled normal window of the editor. False without an X server, with the
    // editor not running, or with no title naming a folder of cwd.
    bool raiseWindow(const Editor& editor, const std::string& cwd) override;

    // Folder names from cwd upward, deepest first, stopping below home and at the root.
    static std::vector<std::string> workspaceCandidates(std::string_view cwd, std::string_view home);
    // The parts of a title between " — ", " – " and " - ", trimmed, empty ones dropped.
    static std::vector<std::string> titleSegments(std::string_view title);
    // Index of the window whose title names the deepest candidate folder, ignoring case; the
    // first such window in the given order.
    static std::optional<std::size_t> bestMatch(const std::vector<std::string>& titles, std::string_view cwd,
                                                std::string_view home);

private:
    std::vector<WindowInfo> editorWindows(const std::string& editorId) const;

    WindowSystem& m_windows;
    std::string m_home;
};

} // namespace tovrin
