#pragma once

#include <filesystem>
#include <optional>

namespace tovrin::InstallationPaths {

// The installation's prefix, worked out from the running executable, which lies either in
// <prefix>/bin or in <prefix>/libexec/tovrin; the build tree has the same shape. Nothing when the
// executable's path can't be read.
std::optional<std::filesystem::path> prefixDir();

// <prefix>/share/tovrin, where the payload lies.
std::optional<std::filesystem::path> shareDir();

// <prefix>/libexec/tovrin/tovrin-desktop, the tray application.
std::optional<std::filesystem::path> desktopExecutable();

// <prefix>/libexec/tovrin/tovrin-play, which plays one alert sound and exits.
std::optional<std::filesystem::path> playerExecutable();

// <prefix>/lib/tovrin/libtovrin-http.so, the HTTP client loaded only when a request is made.
std::optional<std::filesystem::path> httpModule();

} // namespace tovrin::InstallationPaths
