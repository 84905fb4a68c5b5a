#pragma once

#include "services/update/AppcastItem.h"

#include <string>
#include <string_view>

namespace tovrin {

// The words for "up to date", the same in the dialog and on the command line.
inline constexpr std::string_view upToDateText = "Tovrin is up to date.";
inline constexpr std::string_view packageManagerAdvice =
    "This installation is managed by your package manager: update Tovrin through it.";

// How a release is named to the user: its short version, else its version.
std::string releaseName(const AppcastItem& item);

// Why an update check or install did not go through, in the words the user reads.
struct UpdateError {
    enum class Kind {
        notConfigured,
        invalidConfiguration, // detail: what is wrong with the build's feed or key
        feedUnreachable,      // detail: the transport's words
        feedRefused,          // detail: the HTTP status
        feedUnreadable,       // detail: the parser's words
        downloadFailed,       // detail: the transport's words
        downloadRefused,      // detail: the HTTP status
        wrongLength,          // detail: what came and what was announced
        badSignature,
        brokenArchive, // detail: why it could not be unpacked
        notAnInstallation,
        cannotWrite,    // detail: the file system's words
        swapFailed,     // detail: the file system's words
        packageManaged, // detail: the name of the release on offer
    };
    Kind kind = Kind::notConfigured;
    std::string detail;

    std::string description() const;
};

} // namespace tovrin
