#pragma once

#include "core/HttpClient.h"
#include "core/Result.h"
#include "services/update/AppcastItem.h"
#include "services/update/Ed25519Key.h"
#include "services/update/UpdateError.h"

#include <filesystem>
#include <functional>
#include <string_view>

namespace tovrin {

// Replaces a self-contained installation by a signed release. The archive is downloaded beside the
// installation and checked (length, then signature) before anything is unpacked; it is unpacked
// beside the installation too, and the two folders trade places in one atomic exchange, so a
// running copy, or one that starts meanwhile, sees either the old installation or the new one.
// Any failure leaves the installation as it was and nothing beside it.
class UpdateInstaller {
public:
    using Completion = std::function<void(Result<void, UpdateError>)>;

    // `installation` is the folder holding bin/, lib/, libexec/ and share/tovrin.
    UpdateInstaller(HttpClient& http, std::filesystem::path installation, Ed25519Key key);

    // Only an installation that says it is the self-contained archive (share/tovrin/install-kind
    // holds "archive") replaces itself; any other belongs to a package manager and is left alone.
    static bool replacesItself(const std::filesystem::path& installation);
    bool replacesItself() const { return replacesItself(m_installation); }

    // Downloads the release and puts it in place. The completion comes later, on the main loop; for
    // an installation that doesn't replace itself it comes at once, with nothing downloaded.
    void install(const AppcastItem& item, Completion completion);

    // What follows the download, for the bytes that came.
    static Result<void, UpdateError> replace(const std::filesystem::path& installation, const Ed25519Key& key,
                                             const AppcastItem& item, std::string_view archive);

private:
    HttpClient& m_http;
    std::filesystem::path m_installation;
    Ed25519Key m_key;
};

} // namespace tovrin
