#pragma once

#include "core/Result.h"
#include "services/update/Ed25519Key.h"
#include "services/update/UpdateError.h"

#include <string>
#include <string_view>

namespace tovrin {

// What a build knows about its updates: where the feed is, the key its releases are signed with,
// and its own version.
struct UpdateConfiguration {
    std::string feed;
    // The base64 of the raw 32-byte Ed25519 public key.
    std::string publicKey;
    // Shown to the user.
    std::string version;
    // Compared with the feed's versions.
    std::string build;

    // The values this build was made with.
    static UpdateConfiguration ofThisBuild();

    // A key is real when it isn't empty and isn't the template's placeholder ("PUT-YOUR…").
    static bool hasRealKey(std::string_view publicKey);

    // The key to check releases with. Without a real key or a feed, updates are not configured;
    // a feed that isn't a web address or a key that doesn't decode makes the settings unusable.
    Result<Ed25519Key, UpdateError> validate() const;
};

} // namespace tovrin
