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
    return "Version " + std::string(version.empty() ? "1.0" : version) + " (" +
           std::string(build.empty() ? "1" : build) + ")";
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
