#include "core/UserPaths.h"

#include <cstdlib>
#include <pwd.h>
#include <string_view>
#include <unistd.h>

namespace tovrin::UserPaths {
namespace {

const char* nonEmptyEnv(const char* name) {
    const char* value = std::getenv(name);
    return (value && *value) ? value : nullptr;
}

// An XDG base folder: the variable when it holds an absolute path, else the fallback below home.
std::filesystem::path xdgHome(const char* variable, const char* fallback) {
    if (const char* value = nonEmptyEnv(variable); value && value[0] == '/') return value;
    return home() / fallback;
}

} // namespace

std::filesystem::path home() {
    if (const char* h = nonEmptyEnv("HOME")) return h;
    if (const passwd* pw = ::getpwuid(::getuid()); pw && pw->pw_dir) return pw->pw_dir;
    return "/";
}

std::filesystem::path configHome() {
    return xdgHome("XDG_CONFIG_HOME", ".config");
}

std::filesystem::path cacheHome() {
    return xdgHome("XDG_CACHE_HOME", ".cache");
}

std::filesystem::path stateHome() {
    return xdgHome("XDG_STATE_HOME", ".local/state");
}

std::vector<std::filesystem::path> dataFolders() {
    std::vector<std::filesystem::path> folders{xdgHome("XDG_DATA_HOME", ".local/share")};
    const char* shared = nonEmptyEnv("XDG_DATA_DIRS");
    std::string_view list = shared ? shared : "/usr/local/share:/usr/share";
    while (!list.empty()) {
        const auto colon = list.find(':');
        const std::filesystem::path folder(list.substr(0, colon));
        if (folder.is_absolute()) folders.push_back(folder);
        list = colon == std::string_view::npos ? std::string_view{} : list.substr(colon + 1);
    }
    return folders;
}

std::vector<std::filesystem::path> applicationFolders() {
    auto folders = dataFolders();
    for (auto& folder : folders)
        folder /= "applications";
    return folders;
}

std::filesystem::path defaultsFile() {
    return configHome() / "tovrin" / "defaults.json";
}

std::filesystem::path expandTilde(const std::string& path) {
    if (path == "~") return home();
    if (path.starts_with("~/")) return home() / path.substr(2);
    return path;
}

std::filesystem::path statusDirectory() {
    if (const char* dir = nonEmptyEnv("AGENT_STATUS_DIR")) return expandTilde(dir);
    return home() / ".agent-status";
}

} // namespace tovrin::UserPaths
