#include "core/AtomicFile.h"

#include "core/FileDescriptor.h"

#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>

namespace tovrin {
namespace {

std::string describe(const char* step, const std::filesystem::path& path, int error) {
    return std::string(step) + " " + path.string() + ": " + std::strerror(error);
}

// Writes the whole content to "<path>.tmp.<pid>" and flushes it; the caller puts it in place.
Result<std::filesystem::path> writeTemporary(const std::filesystem::path& path, std::string_view content,
                                             mode_t mode) {
    using R = Result<std::filesystem::path>;
    std::filesystem::path temp = path;
    temp += ".tmp." + std::to_string(::getpid());

    FileDescriptor fd(::open(temp.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC | O_NOFOLLOW, mode));
    if (fd.get() < 0) return R::failure(describe("Could not create", temp, errno));

    auto fail = [&](const char* step) {
        const int error = errno;
        ::unlink(temp.c_str());
        return R::failure(describe(step, temp, error));
    };
    if (!fd.writeAll(content)) return fail("Could not write");
    if (::fchmod(fd.get(), mode) != 0) return fail("Could not set permissions of");
    if (::fsync(fd.get()) != 0) return fail("Could not flush");
    if (::close(fd.release()) != 0) return fail("Could not close");
    return temp;
}

} // namespace

Result<void> writeFileAtomically(const std::filesystem::path& path, std::string_view content, mode_t mode) {
    auto temp = writeTemporary(path, content, mode);
    if (!temp) return Result<void>::failure(temp.error());
    if (::rename(temp.value().c_str(), path.c_str()) != 0) {
        const int error = errno;
        ::unlink(temp.value().c_str());
        return Result<void>::failure(describe("Could not rename", temp.value(), error));
    }
    return {};
}

Result<void> createFileOnce(const std::filesystem::path& path, std::string_view content, mode_t mode) {
    auto temp = writeTemporary(path, content, mode);
    if (!temp) return Result<void>::failure(temp.error());
    // link(2) fails when the name is taken, where rename would replace it.
    const int linked = ::link(temp.value().c_str(), path.c_str());
    const int error = errno;
    ::unlink(temp.value().c_str());
    if (linked != 0 && error != EEXIST)
        return Result<void>::failure(describe("Could not create", path, error));
    return {};
}

Result<std::string> readWholeFile(const std::filesystem::path& path) {
    FileDescriptor fd(::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK));
    if (fd.get() < 0) return Result<std::string>::failure(describe("Could not open", path, errno));
    struct stat info {};
    if (::fstat(fd.get(), &info) != 0)
        return Result<std::string>::failure(describe("Could not inspect", path, errno));
    if (!S_ISREG(info.st_mode)) return Result<std::string>::failure(path.string() + " is not a regular file");

    std::string content;
    if (!fd.readAppending(content, std::string::npos))
        return Result<std::string>::failure(describe("Could not read", path, errno));
    return content;
}

bool existsAt(const std::filesystem::path& path) {
    std::error_code ignored;
    return std::filesystem::exists(std::filesystem::symlink_status(path, ignored));
}

} // namespace tovrin
