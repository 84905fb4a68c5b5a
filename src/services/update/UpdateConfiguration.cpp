#include "services/update/UpdateConfiguration.h"

#include "core/BuildInfo.h"

namespace tovrin {
namespace {

bool isWebAddress(std::string_view address) {
    for (std::string_view scheme : {"https://", "http://"}) {
        if (address.starts_with(scheme) && address.size() > scheme.size()) return true;
    }
    return false;
}

} // namespace

UpdateConfiguration UpdateConfiguration::ofThisBuild() {
    return {.feed = std::string(BuildInfo::updateFeed),
            .publicKey = std::string(BuildInfo::updateKey),
            .version = std::string(BuildInfo::version),
            .build = std::string(BuildInfo::buildNumber)};
}

bool UpdateConfiguration::hasRealKey(std::string_view publicKey) {
    return !publicKey.empty() && !publicKey.starts_with("PUT-YOUR");
}

Result<Ed25519Key, UpdateError> UpdateConfiguration::validate() const {
    using R = Result<Ed25519Key, UpdateError>;
    if (!hasRealKey(publicKey) || feed.empty()) return R::failure({UpdateError::Kind::notConfigured, {}});
    if (!isWebAddress(feed)) {
        return R::failure({UpdateError::Kind::invalidConfiguration,
                           "the update address \"" + feed + "\" is not a web address."});
    }
    auto key = Ed25519Key::fromBase64(publicKey);
    if (!key) {
        return R::failure({UpdateError::Kind::invalidConfiguration,
                           "the update key is not the base64 of a 32-byte Ed25519 public key."});
    }
    return *key;
}

} // namespace tovrin
