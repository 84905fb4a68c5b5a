#pragma once

#include <filesystem>
#include <optional>

namespace tovrin::InstallationPaths {

// <folder of the running executable>/../share/tovrin, where the payload lies both in the build
// tree and in an installed package; nothing when the executable's path can't be read.
std::optional<std::filesystem::path> shareDir();

} // namespace tovrin::InstallationPaths
