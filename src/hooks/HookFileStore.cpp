#include "hooks/HookFileStore.h"

#include "core/AtomicFile.h"
#include "hooks/ForeignJson.h"
#include "hooks/HookFileError.h"

#include <cerrno>
#include <cstring>
#include <optional>
#include <string>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>

namespace tovrin {
namespace {

namespace fs = std::filesystem;
using nlohmann::json;

std::string describe(const char* step, const fs::path& path, const std::string& reason) {
    return std::string(step) + " " + path.string() + ": " + reason;
}

fs::path withSuffix(const fs::path& path, const char* suffix) {
    fs::path result = path;
    result += suffix;
    return result;
}

// What stands at the path, links not followed; nothing when the path is free.
std::optional<struct stat> statusOf(const fs::path& path) {
    struct stat info {};
    if (::lstat(path.c_str(), &info) != 0) return std::nullopt;
    return info;
}

// A file the user can't write to, or made read-only for themselves, stays as it is.
bool isReadOnly(const fs::path& path, const struct stat& info) {
    return (info.st_mode & S_IWUSR) == 0 || ::access(path.c_str(), W_OK) != 0;
}

// Why a file that exists may not be replaced or removed; nothing when it may.
std::optional<std::string> refusalToChange(const fs::path& path, const struct stat& info) {
    if (S_ISLNK(info.st_mode)) return HookFileError::symbolicLink(path);
    if (!S_ISREG(info.st_mode)) return HookFileError::notRegularFile(path);
    if (isReadOnly(path, info)) return HookFileError::readOnly(path);
    return std::nullopt;
}

// Written atomically like the file itself: a copy cut short (disk full) must not pass for the
// old file, so the backup is either whole or absent.
void refreshBackup(const fs::path& path, mode_t mode) {
    const auto backup = HookFileStore::backupPath(path);
    ::unlink(backup.c_str());
    const auto content = readWholeFile(path);
    if (content) (void)writeFileAtomically(backup, content.value(), mode);
}

// The file as it was before we first changed it, byte for byte. Whoever comes first keeps it;
// an original already there is never replaced.
Result<void> keepOriginal(const fs::path& path, mode_t mode) {
    const auto original = HookFileStore::originalPath(path);
    if (statusOf(original)) return {};
    auto content = readWholeFile(path);
    if (!content) return Result<void>::failure(content.error());
    auto kept = createFileOnce(original, content.value(), mode);
    if (!kept)
        return Result<void>::failure("Could not keep the original of " + path.string() + ": " + kept.error());
    return {};
}

} // namespace

Result<std::string> HookFileStore::contentFor(const json& object, const fs::path& path) {
    auto text = ForeignJson::pretty(object);
    if (text) return std::move(text).value();
    return Result<std::string>::failure(text.error() == ForeignJson::PrintProblem::tooLarge
                                            ? HookFileError::tooLargeToWrite(path)
                                            : HookFileError::unencodable(path));
}

fs::path HookFileStore::backupPath(const fs::path& path) {
    return withSuffix(path, ".tovrin.bak");
}

fs::path HookFileStore::originalPath(const fs::path& path) {
    return withSuffix(path, ".tovrin.orig");
}

bool HookFileStore::fileExists(const fs::path& path) const {
    return existsAt(path);
}

Result<json> HookFileStore::readObject(const fs::path& path) const {
    struct stat info {};
    if (::lstat(path.c_str(), &info) != 0) {
        if (errno == ENOENT) return json::object();
        return Result<json>::failure(describe("Could not open", path, std::strerror(errno)));
    }
    if (S_ISLNK(info.st_mode)) return Result<json>::failure(HookFileError::symbolicLink(path));
    if (!S_ISREG(info.st_mode)) return Result<json>::failure(HookFileError::notRegularFile(path));
    if (static_cast<std::size_t>(info.st_size) > ForeignJson::maxReadBytes)
        return Result<json>::failure(
            HookFileError::unreadable(path, {ForeignJson::ReadProblem::Kind::tooLarge, {}}));

    auto content = readWholeFile(path);
    if (!content) return Result<json>::failure(content.error());
    if (content.value().empty()) return json::object();
    auto parsed = ForeignJson::read(content.value());
    if (!parsed) return Result<json>::failure(HookFileError::unreadable(path, parsed.error()));
    return std::move(parsed).value();
}

Result<void> HookFileStore::write(const json& object, const fs::path& path, bool isUsersOwn) {
    const auto existing = statusOf(path);
    if (existing) {
        if (auto refusal = refusalToChange(path, *existing)) return Result<void>::failure(*refusal);
    }
    // Printed before anything is touched, so that a document we can't write changes nothing.
    auto text = contentFor(object, path);
    if (!text) return Result<void>::failure(text.error());
    if (path.has_parent_path()) {
        std::error_code error;
        fs::create_directories(path.parent_path(), error);
        if (error)
            return Result<void>::failure(describe("Could not create", path.parent_path(), error.message()));
    }

    // A private file stays private after we replace it.
    const mode_t mode = existing ? existing->st_mode & 07777 : 0644;
    if (existing) {
        if (isUsersOwn) {
            if (auto kept = keepOriginal(path, mode); !kept) return kept;
        }
        refreshBackup(path, mode);
    }
    return writeFileAtomically(path, text.value(), mode);
}

Result<void> HookFileStore::remove(const fs::path& path) {
    const auto existing = statusOf(path);
    if (existing) {
        if (auto refusal = refusalToChange(path, *existing)) return Result<void>::failure(*refusal);
    }
    ::unlink(backupPath(path).c_str());
    if (!existing || ::unlink(path.c_str()) == 0) return {};
    const int error = errno;
    if (error == ENOENT) return {};
    return Result<void>::failure(describe("Could not remove", path, std::strerror(error)));
}

} // namespace tovrin
