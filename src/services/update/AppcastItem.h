#pragma once

#include <cstdint>
#include <optional>
#include <string>

namespace tovrin {

// One release as the update feed lists it. Fields the feed leaves out stay empty.
struct AppcastItem {
    // Compared with the running build's number.
    std::string version;
    // What the user is shown, such as "1.5.0".
    std::string shortVersion;
    // Release notes, rich text.
    std::string notes;
    // The release archive, its size in bytes and the base64 Ed25519 signature over its bytes.
    std::string url;
    std::optional<std::uint64_t> length;
    std::string signature;

    bool operator==(const AppcastItem&) const = default;
};

} // namespace tovrin
