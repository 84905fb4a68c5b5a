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
// The tool's own monochrome mark as SVG text in a 24 by 24 view box; empty when it has none.
std::string_view brandLogoSvg(std::string_view tool);

} // namespace tovrin::ToolIconSources
