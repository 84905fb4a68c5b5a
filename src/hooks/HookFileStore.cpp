#include "hooks/HookFileStore.h"

#include "core/AtomicFile.h"
#include "hooks/HookFileError.h"

#include <cerrno>
#include <cstring>
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

fs::file_status linkStatus(const fs::path& path) {
    std::error_code ignored;
    return fs::symlink_status(path, ignored);
}

// A private file stays private after we replace it.
mode_t modeOf(const fs::path& path) {
    struct stat info {};
    if (::stat(path.c_str(), &info) == 0 && S_ISREG(info.st_mode)) return info.st_mode & 07777;
    return 0644;
}

// Written atomically like the file itself: a copy cut short (disk full) must not pass for the
// old file, so the backup is either whole or absent.
void refreshBackup(const fs::path& path, mode_t mode) {
    if (!fs::exists(linkStatus(path))) return;
    const auto backup = HookFileStore::backupPath(path);
    ::unlink(backup.c_str());
    const auto content = readWholeFile(path);
    if (content) (void)writeFileAtomically(backup, content.value(), mode);
}

} // namespace

fs::path HookFileStore::backupPath(const fs::path& path) {
    fs::path backup = path;
    backup += ".tovrin.bak";
    return backup;
}

bool HookFileStore::fileExists(const fs::path& path) const {
    return fs::exists(linkStatus(path));
}

Result<json> HookFileStore::readObject(const fs::path& path) const {
    std::error_code error;
    const auto status = fs::symlink_status(path, error);
    if (status.type() == fs::file_type::none)
        return Result<json>::failure(describe("Could not open", path, error.message()));
    if (fs::is_symlink(status)) return Result<json>::failure(HookFileError::symbolicLink(path));
    if (!fs::exists(status)) return json::object();

    auto content = readWholeFile(path);
    if (!content) return Result<json>::failure(content.error());
    if (content.value().empty()) return json::object();
    auto parsed =
        json::parse(content.value(), nullptr, /*allow_exceptions=*/false, /*ignore_comments=*/false);
    if (!parsed.is_object()) return Result<json>::failure(HookFileError::unreadableJSON(path));
    return parsed;
}

Result<void> HookFileStore::write(const json& object, const fs::path& path) {
    if (fs::is_symlink(linkStatus(path))) return Result<void>::failure(HookFileError::symbolicLink(path));
    if (path.has_parent_path()) {
        std::error_code error;
        fs::create_directories(path.parent_path(), error);
        if (error)
            return Result<void>::failure(describe("Could not create", path.parent_path(), error.message()));
    }

    const mode_t mode = modeOf(path);
    refreshBackup(path, mode);
    std::string text;
    try {
        text = object.dump(2) + "\n";
    } catch (const json::exception&) {
        return Result<void>::failure(HookFileError::unencodable(path));
    }
    return writeFileAtomically(path, text, mode);
}

Result<void> HookFileStore::remove(const fs::path& path) {
    if (fs::is_symlink(linkStatus(path))) return Result<void>::failure(HookFileError::symbolicLink(path));
    ::unlink(backupPath(path).c_str());
    if (::unlink(path.c_str()) == 0) return {};
    const int error = errno;
    if (error == ENOENT) return {};
    return Result<void>::failure(describe("Could not remove", path, std::strerror(error)));
}

} // namespace tovrin
