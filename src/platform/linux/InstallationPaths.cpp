#include "platform/linux/InstallationPaths.h"

namespace tovrin::InstallationPaths {

std::optional<std::filesystem::path> prefixDir() {
    std::error_code error;
    const auto executable = std::filesystem::read_symlink("/proc/self/exe", error);
    if (error || executable.empty()) return std::nullopt;
    const auto folder = executable.parent_path();
    if (folder.filename() == "tovrin" && folder.parent_path().filename() == "libexec") {
        return folder.parent_path().parent_path().lexically_normal();
    }
    return folder.parent_path().lexically_normal();
}

std::optional<std::filesystem::path> shareDir() {
    const auto prefix = prefixDir();
    if (!prefix) return std::nullopt;
    return *prefix / "share" / "tovrin";
}

std::optional<std::filesystem::path> desktopExecutable() {
    const auto prefix = prefixDir();
    if (!prefix) return std::nullopt;
    return *prefix / "libexec" / "tovrin" / "tovrin-desktop";
}

std::optional<std::filesystem::path> playerExecutable() {
    const auto prefix = prefixDir();
    if (!prefix) return std::nullopt;
    return *prefix / "libexec" / "tovrin" / "tovrin-play";
}

std::optional<std::filesystem::path> httpModule() {
    const auto prefix = prefixDir();
    if (!prefix) return std::nullopt;
    return *prefix / "lib" / "tovrin" / "libtovrin-http.so";
}

} // namespace tovrin::InstallationPaths
