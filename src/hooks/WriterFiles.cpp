#include "hooks/WriterFiles.h"

#include "core/AtomicFile.h"

namespace tovrin {
namespace fs = std::filesystem;

bool LocalWriterFiles::exists(const fs::path& path) const {
    std::error_code ignored;
    return fs::exists(path, ignored);
}

std::optional<std::string> LocalWriterFiles::read(const fs::path& path) const {
    auto content = readWholeFile(path);
    if (!content) return std::nullopt;
    return std::move(content).value();
}

Result<void> LocalWriterFiles::replace(const fs::path& path, std::string_view content, mode_t mode) {
    std::error_code error;
    fs::create_directories(path.parent_path(), error);
    if (error)
        return Result<void>::failure("Could not create " + path.parent_path().string() + ": " +
                                     error.message());
    return writeFileAtomically(path, content, mode);
}

Result<void> LocalWriterFiles::erase(const fs::path& path) {
    if (!existsAt(path)) return {};
    std::error_code error;
    fs::remove(path, error);
    if (error) return Result<void>::failure("Could not remove " + path.string() + ": " + error.message());
    return {};
}

} // namespace tovrin
