#include "hooks/JQLocator.h"

#include <sys/stat.h>
#include <unistd.h>

namespace tovrin {
namespace {

bool isExecutableFile(const std::filesystem::path& path) {
    struct stat info {};
    return ::stat(path.c_str(), &info) == 0 && S_ISREG(info.st_mode) && ::access(path.c_str(), X_OK) == 0;
}

} // namespace

std::string JQLocator::Availability::summary() const {
    switch (kind) {
    case Kind::system:
        return "jq found at " + path + " (installed with your system).";
    case Kind::userInstalled:
        return "jq found at " + path +
               ". Agents launched from a terminal will find it; an editor launched from the application "
               "menu might not.";
    case Kind::missing:
        break;
    }
    return "jq is not installed. Hooks will run but record nothing, so Tovrin stays gray. Install it with "
           "your "
           "package manager, e.g.: sudo apt install jq";
}

std::vector<std::filesystem::path> JQLocator::standardSearchPaths(const std::filesystem::path& home) {
    return {systemPath, "/usr/local/bin/jq", home / ".local/bin/jq", "/home/linuxbrew/.linuxbrew/bin/jq"};
}

JQLocator::JQLocator(const std::filesystem::path& home) : JQLocator(standardSearchPaths(home), systemPath) {}

JQLocator::JQLocator(std::vector<std::filesystem::path> searchPaths, std::filesystem::path systemJQ)
    : m_searchPaths(std::move(searchPaths)), m_systemPath(std::move(systemJQ)) {}

JQLocator::Availability JQLocator::locate() const {
    for (const auto& path : m_searchPaths) {
        if (!isExecutableFile(path)) continue;
        return path == m_systemPath ? Availability::system(path.string())
                                    : Availability::userInstalled(path.string());
    }
    return Availability::missing();
}

} // namespace tovrin
