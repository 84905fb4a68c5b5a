#include "core/UserPaths.h"

#include <cstdlib>
#include <pwd.h>
#include <unistd.h>

namespace tovrin::UserPaths {
namespace {

const char* nonEmptyEnv(const char* name) {
    const char* value = std::getenv(name);
    return (value && *value) ? value : nullptr;
}

} // namespace

std::filesystem::path home() {
    if (const char* h = nonEmptyEnv("HOME")) return h;
    if (const passwd* pw = ::getpwuid(::getuid()); pw && pw->pw_dir) return pw->pw_dir;
    return "/";
}

std::filesystem::path configHome() {
    if (const char* c = nonEmptyEnv("XDG_CONFIG_HOME"); c && c[0] == '/') return c;
    return home() / ".config";
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
