#include "platform/linux/InstallationPaths.h"

namespace tovrin::InstallationPaths {

std::optional<std::filesystem::path> shareDir() {
    std::error_code error;
    const auto executable = std::filesystem::read_symlink("/proc/self/exe", error);
    if (error || executable.empty()) return std::nullopt;
    return (executable.parent_path().parent_path() / "share" / "tovrin").lexically_normal();
}

} // namespace tovrin::InstallationPaths
