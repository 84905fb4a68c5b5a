#include "services/update/UpdateError.h"

namespace tovrin {

std::string releaseName(const AppcastItem& item) {
    return item.shortVersion.empty() ? item.version : item.shortVersion;
}

std::string UpdateError::description() const {
    switch (kind) {
    case Kind::notConfigured:
        return "Updates are not configured in this build.";
    case Kind::invalidConfiguration:
        return "This build's update settings are not usable: " + detail;
    case Kind::feedUnreachable:
        return "Could not reach the update feed: " + detail;
    case Kind::feedRefused:
        return "The update feed answered with HTTP status " + detail + ".";
    case Kind::feedUnreadable:
        return "The update feed could not be read: " + detail;
    case Kind::downloadFailed:
        return "The download failed: " + detail;
    case Kind::downloadRefused:
        return "The download server answered with HTTP status " + detail + ".";
    case Kind::wrongLength:
        return "The download is not the size the feed announced (" + detail + ").";
    case Kind::badSignature:
        return "The download's signature does not match this build's key; it was not installed.";
    case Kind::brokenArchive:
        return "The downloaded archive could not be unpacked: " + detail;
    case Kind::notAnInstallation:
        return "The downloaded archive does not hold a Tovrin installation.";
    case Kind::cannotWrite:
        return "Could not write beside the installation: " + detail;
    case Kind::swapFailed:
        return "Could not put the new version in place: " + detail;
    case Kind::packageManaged:
        return "Tovrin " + detail + " is available. " + std::string(packageManagerAdvice);
    }
    return detail;
}

} // namespace tovrin
