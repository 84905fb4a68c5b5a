#pragma once

#include <string>
#include <string_view>

namespace tovrin::AboutContent {

inline constexpr std::string_view motto = "One app to watch them all.";

// "Version <version> (<build>)"; an empty version reads "1.0", an empty build "1".
std::string versionLine(std::string_view version, std::string_view build);
// "<version> (<build>)", each part that is empty replaced by its stand-in.
std::string versionAndBuild(std::string_view version, std::string_view build, std::string_view noVersion,
                            std::string_view noBuild);

// The web site as the link shows it (the bare host) and as the browser opens it (with https://
// when no scheme is given). Empty when the build names no site.
std::string websiteName(std::string_view site);
std::string websiteAddress(std::string_view site);

} // namespace tovrin::AboutContent
