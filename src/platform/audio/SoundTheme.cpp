#include "platform/audio/SoundTheme.h"

#include "core/AsciiText.h"
#include "core/AtomicFile.h"
#include "core/KeyFile.h"
#include "core/UserPaths.h"

#include <algorithm>
#include <array>
#include <system_error>
#include <vector>

namespace tovrin::SoundTheme {
namespace {

namespace fs = std::filesystem;

// The "Inherits" list of a theme's index.theme, from the first data folder that has one.
std::vector<std::string> inheritedThemes(const std::string& theme, const std::vector<fs::path>& dirs) {
    for (const auto& dir : dirs) {
        const auto index = readWholeFile(dir / "sounds" / theme / "index.theme");
        if (!index) continue;
        std::vector<std::string> parents;
        const std::string inherits =
            KeyFile::value(KeyFile::group(index.value(), "Sound Theme"), "Inherits").value_or("");
        std::string_view rest = inherits;
        while (!rest.empty()) {
            const auto comma = rest.find(',');
            const std::string_view name = AsciiText::trimmed(rest.substr(0, comma));
            if (!name.empty() && name.find('/') == std::string_view::npos) parents.emplace_back(name);
            rest = comma == std::string_view::npos ? std::string_view{} : rest.substr(comma + 1);
        }
        return parents;
    }
    return {};
}

std::vector<std::string> themeChain(const std::string& themeName, const std::vector<fs::path>& dirs) {
    std::vector<std::string> chain;
    std::vector<std::string> queue{themeName};
    // Breadth first, each theme once, so that a loop of inheritance ends.
    for (std::size_t i = 0; i < queue.size(); ++i) {
        const std::string& theme = queue[i];
        if (theme.empty() || std::find(chain.begin(), chain.end(), theme) != chain.end()) continue;
        chain.push_back(theme);
        for (auto& parent : inheritedThemes(theme, dirs))
            queue.push_back(std::move(parent));
    }
    if (std::find(chain.begin(), chain.end(), "freedesktop") == chain.end())
        chain.emplace_back("freedesktop");
    return chain;
}

} // namespace

std::optional<std::filesystem::path> find(const std::string& themeName, const std::string& eventName) {
    if (eventName.empty() || eventName.find('/') != std::string::npos) return std::nullopt;
    const std::vector<fs::path> dirs = UserPaths::dataFolders();
    const std::vector<std::string> themes = themeChain(themeName, dirs);
    constexpr std::array extensions{".oga", ".ogg", ".wav"};

    std::string name = eventName;
    for (;;) {
        for (const auto& theme : themes) {
            for (const auto& dir : dirs) {
                for (const char* extension : extensions) {
                    fs::path candidate = dir / "sounds" / theme / "stereo" / (name + extension);
                    std::error_code error;
                    if (fs::is_regular_file(candidate, error)) return candidate;
                }
            }
        }
        const std::size_t dash = name.rfind('-');
        if (dash == std::string::npos || dash == 0) return std::nullopt;
        name.erase(dash);
    }
}

} // namespace tovrin::SoundTheme
