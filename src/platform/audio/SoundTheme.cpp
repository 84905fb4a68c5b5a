#include "platform/audio/SoundTheme.h"

#include "core/UserPaths.h"

#include <algorithm>
#include <array>
#include <cstdlib>
#include <fstream>
#include <system_error>
#include <vector>

namespace tovrin::SoundTheme {
namespace {

namespace fs = std::filesystem;

std::optional<fs::path> absoluteDir(const char* value) {
    if (!value || !*value) return std::nullopt;
    fs::path dir(value);
    if (!dir.is_absolute()) return std::nullopt;
    return dir;
}

// $XDG_DATA_HOME, then $XDG_DATA_DIRS, with the defaults of the base directory layout; relative
// entries are ignored, as that layout asks.
std::vector<fs::path> dataDirs() {
    std::vector<fs::path> dirs;
    dirs.push_back(absoluteDir(std::getenv("XDG_DATA_HOME")).value_or(UserPaths::home() / ".local/share"));
    const char* list = std::getenv("XDG_DATA_DIRS");
    const std::string joined = list && *list ? list : "/usr/local/share:/usr/share";
    std::size_t start = 0;
    while (start <= joined.size()) {
        const std::size_t end = std::min(joined.find(':', start), joined.size());
        if (auto dir = absoluteDir(joined.substr(start, end - start).c_str())) dirs.push_back(*dir);
        start = end + 1;
    }
    return dirs;
}

// The "Inherits" list of a theme's index.theme, from the first data folder that has one.
std::vector<std::string> inheritedThemes(const std::string& theme, const std::vector<fs::path>& dirs) {
    for (const auto& dir : dirs) {
        std::ifstream index(dir / "sounds" / theme / "index.theme");
        if (!index) continue;
        std::vector<std::string> parents;
        bool inThemeSection = false;
        for (std::string line; std::getline(index, line);) {
            if (!line.empty() && line.back() == '\r') line.pop_back();
            if (line.starts_with('[')) {
                inThemeSection = line == "[Sound Theme]";
            } else if (inThemeSection && line.starts_with("Inherits=")) {
                std::string rest = line.substr(9);
                std::size_t start = 0;
                while (start <= rest.size()) {
                    const std::size_t end = std::min(rest.find(',', start), rest.size());
                    std::string name = rest.substr(start, end - start);
                    name.erase(0, name.find_first_not_of(' '));
                    name.erase(name.find_last_not_of(' ') + 1);
                    if (!name.empty() && name.find('/') == std::string::npos) parents.push_back(name);
                    start = end + 1;
                }
            }
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
    const std::vector<fs::path> dirs = dataDirs();
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
