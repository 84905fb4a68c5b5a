#include "ui/viewmodels/AboutContent.h"

namespace tovrin::AboutContent {

namespace {

std::string_view withoutScheme(std::string_view site) {
    for (std::string_view scheme : {"https://", "http://"}) {
        if (site.starts_with(scheme)) site.remove_prefix(scheme.size());
    }
    while (site.ends_with('/'))
        site.remove_suffix(1);
    return site;
}

} // namespace

std::string versionLine(std::string_view version, std::string_view build) {
    return "Version " + versionAndBuild(version, build, "1.0", "1");
}

std::string versionAndBuild(std::string_view version, std::string_view build, std::string_view noVersion,
                            std::string_view noBuild) {
    return std::string(version.empty() ? noVersion : version) + " (" +
           std::string(build.empty() ? noBuild : build) + ")";
}

std::string websiteName(std::string_view site) {
    return std::string(withoutScheme(site));
}

std::string websiteAddress(std::string_view site) {
    if (withoutScheme(site).empty()) return {};
    if (site.starts_with("https://") || site.starts_with("http://")) return std::string(site);
    return "https://" + std::string(site);
}

} // namespace tovrin::AboutContent
