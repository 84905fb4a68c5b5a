#pragma once

#include <QImage>
#include <QPixmap>
#include <optional>
#include <string>

namespace tovrin {

// A picture for a tool: the user's own file, else the installed application's icon. Found pictures
// are kept for the whole run; a miss is looked up again next time.
namespace AppIconProvider {

std::optional<QPixmap> icon(const std::string& tool);
std::optional<QPixmap> userOverride(const std::string& tool);
std::optional<QPixmap> installedAppIcon(const std::string& tool);

} // namespace AppIconProvider

// The tool's own monochrome mark, rendered from SVG, as an alpha mask to be tinted by the caller.
namespace BrandLogoProvider {

std::optional<QImage> templateImage(const std::string& tool);

} // namespace BrandLogoProvider

} // namespace tovrin
