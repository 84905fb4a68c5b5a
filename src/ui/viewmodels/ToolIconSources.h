#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

// Where a tool's picture may come from, in the order they are tried: a file the user dropped in,
// the icon of an installed application, the tool's own mark.
namespace tovrin::ToolIconSources {

// ~/.tovrin/icons
std::filesystem::path overrideFolder(const std::filesystem::path& home);
// The files a user override may be, in the order tried: <tool>.png, .svg, .jpg, .jpeg.
std::vector<std::filesystem::path> overrideCandidates(const std::filesystem::path& folder,
                                                      std::string_view tool);

// Desktop-file ids (also icon-theme names) of the applications that stand for a tool; none for
// tools that are no installed application.
const std::vector<std::string>& desktopIds(std::string_view tool);
// The folders that hold desktop files: $XDG_DATA_HOME (default ~/.local/share) first, then each of
// $XDG_DATA_DIRS (default /usr/local/share:/usr/share), each with "applications" appended.
// Relative entries are ignored, as the base directory rules ask.
std::vector<std::filesystem::path> applicationFolders(std::optional<std::string_view> dataHome,
                                                      std::optional<std::string_view> dataDirs,
                                                      const std::filesystem::path& home);
// The Icon= value of a desktop file's [Desktop Entry] group, if present and not empty.
std::optional<std::string> desktopEntryIcon(std::string_view desktopFile);

// The tool's own monochrome mark as SVG text in a 24 by 24 view box; empty when it has none.
std::string_view brandLogoSvg(std::string_view tool);

} // namespace tovrin::ToolIconSources
