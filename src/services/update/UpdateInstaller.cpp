#include "services/update/UpdateInstaller.h"

#include "core/AsciiText.h"
#include "core/AtomicFile.h"
#include "services/update/TarArchive.h"

#include <cctype>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <optional>
#include <sys/stat.h>
#include <utility>

namespace tovrin {
namespace {

namespace fs = std::filesystem;
using Outcome = Result<void, UpdateError>;

Outcome failure(UpdateError::Kind kind, std::string detail = {}) {
    return Outcome::failure({kind, std::move(detail)});
}

// Removes what it names when it goes, whatever happened to be there by then.
class Temporary {
public:
    explicit Temporary(fs::path path) : m_path(std::move(path)) {}
    Temporary(const Temporary&) = delete;
    Temporary& operator=(const Temporary&) = delete;
    ~Temporary() {
        std::error_code ignored;
        fs::remove_all(m_path, ignored);
    }
    const fs::path& path() const { return m_path; }

private:
    fs::path m_path;
};

bool hasArchiveMarker(const fs::path& installation) {
    const auto marker = readWholeFile(installation / "share" / "tovrin" / "install-kind");
    if (!marker) return false;
    return AsciiText::trimmed(marker.value()) == "archive";
}

bool looksLikeInstallation(const fs::path& folder) {
    std::error_code error;
    const auto command = fs::status(folder / "bin" / "tovrin", error);
    return !error && fs::is_regular_file(command) &&
           (command.permissions() & fs::perms::owner_exec) != fs::perms::none && hasArchiveMarker(folder);
}

// The installation inside what was unpacked: the folder itself when the archive's members lie at
// its top, else the one folder the archive holds.
std::optional<fs::path> unpackedInstallation(const fs::path& folder) {
    std::error_code error;
    if (fs::exists(folder / "bin", error)) return folder;
    std::optional<fs::path> only;
    for (fs::directory_iterator it(folder, error), end; !error && it != end; it.increment(error)) {
        if (only || !it->is_directory(error) || it->is_symlink(error)) return std::nullopt;
        only = it->path();
    }
    return error ? std::nullopt : only;
}

std::string lengthMismatch(std::size_t came, std::uint64_t announced) {
    return std::to_string(came) + " bytes came, " + std::to_string(announced) + " were announced";
}

} // namespace

UpdateInstaller::UpdateInstaller(HttpClient& http, std::filesystem::path installation, Ed25519Key key)
    : m_http(http), m_installation(std::move(installation)), m_key(key) {}

bool UpdateInstaller::replacesItself(const std::filesystem::path& installation) {
    return hasArchiveMarker(installation);
}

void UpdateInstaller::install(const AppcastItem& item, Completion completion) {
    if (!replacesItself()) return completion(failure(UpdateError::Kind::packageManaged, releaseName(item)));
    HttpRequest request;
    request.url = item.url;
    request.timeout = Seconds(15 * 60);
    // The answer may come after this object is gone: it keeps what it needs.
    m_http.send(std::move(request), [installation = m_installation, key = m_key, item,
                                     completion = std::move(completion)](HttpResult result) {
        if (!result)
            return completion(failure(UpdateError::Kind::downloadFailed, result.error().description()));
        const HttpResponse& response = result.value();
        if (!response.status)
            return completion(failure(UpdateError::Kind::downloadFailed, "the answer was not HTTP."));
        if (*response.status != 200)
            return completion(failure(UpdateError::Kind::downloadRefused, std::to_string(*response.status)));
        completion(replace(installation, key, item, response.body));
    });
}

Outcome UpdateInstaller::replace(const std::filesystem::path& installation, const Ed25519Key& key,
                                 const AppcastItem& item, std::string_view archive) {
    // Beside the installation, so that both lie on one file system and can trade places.
    std::string pattern = (installation.parent_path() / ".tovrin-update-XXXXXX").string();
    if (!::mkdtemp(pattern.data())) return failure(UpdateError::Kind::cannotWrite, std::strerror(errno));
    const Temporary staging{fs::path(pattern)};
    const Temporary download{fs::path(pattern + ".tar.gz")};

    if (auto written = writeFileAtomically(download.path(), archive, 0600); !written)
        return failure(UpdateError::Kind::cannotWrite, written.error());
    // What is checked is what tar will read.
    const auto stored = readWholeFile(download.path());
    if (!stored) return failure(UpdateError::Kind::cannotWrite, stored.error());
    if (!item.length || stored.value().size() != *item.length) {
        return failure(UpdateError::Kind::wrongLength,
                       lengthMismatch(stored.value().size(), item.length.value_or(0)));
    }
    if (!key.verifies(item.signature, stored.value())) return failure(UpdateError::Kind::badSignature);

    const auto members = TarArchive::members(download.path());
    if (!members) return failure(UpdateError::Kind::brokenArchive, members.error());
    for (const std::string& member : members.value()) {
        if (!TarArchive::staysInside(member))
            return failure(UpdateError::Kind::brokenArchive,
                           "its member \"" + member + "\" lies outside its folder.");
    }
    if (auto unpacked = TarArchive::extract(download.path(), staging.path()); !unpacked)
        return failure(UpdateError::Kind::brokenArchive, unpacked.error());
    const auto replacement = unpackedInstallation(staging.path());
    if (!replacement || !looksLikeInstallation(*replacement))
        return failure(UpdateError::Kind::notAnInstallation);

    // The new folder takes the old one's permissions; a temporary folder is private to its maker.
    struct stat old {};
    if (::stat(installation.c_str(), &old) == 0) ::chmod(replacement->c_str(), old.st_mode & 07777);
    if (::renameat2(AT_FDCWD, installation.c_str(), AT_FDCWD, replacement->c_str(), RENAME_EXCHANGE) != 0)
        return failure(UpdateError::Kind::swapFailed, std::strerror(errno));
    // The old installation now lies where the new one was unpacked, and goes with the staging folder.
    return {};
}

} // namespace tovrin
