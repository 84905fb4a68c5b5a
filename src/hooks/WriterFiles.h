#pragma once

#include "core/Result.h"

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <sys/types.h>

namespace tovrin {

// Where the status writer and its version stamp are kept: this machine's disk, or a remote host's.
class WriterFiles {
public:
    virtual ~WriterFiles() = default;
    // Whether the path names something, links followed.
    virtual bool exists(const std::filesystem::path& path) const = 0;
    // A small regular file's content; nothing when it can't be read.
    virtual std::optional<std::string> read(const std::filesystem::path& path) const = 0;
    // Creates the folder and replaces the file atomically with exactly this content and mode.
    virtual Result<void> replace(const std::filesystem::path& path, std::string_view content,
                                 mode_t mode) = 0;
    // A missing file is no failure.
    virtual Result<void> erase(const std::filesystem::path& path) = 0;
};

class LocalWriterFiles final : public WriterFiles {
public:
    bool exists(const std::filesystem::path& path) const override;
    std::optional<std::string> read(const std::filesystem::path& path) const override;
    Result<void> replace(const std::filesystem::path& path, std::string_view content, mode_t mode) override;
    Result<void> erase(const std::filesystem::path& path) override;
};

} // namespace tovrin
