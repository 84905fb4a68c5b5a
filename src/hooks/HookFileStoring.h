#pragma once

#include "core/Result.h"

#include <filesystem>
#include <nlohmann/json.hpp>

namespace tovrin {

// Reads and writes other programs' JSON configuration files. Errors are user-facing texts.
class HookFileStoring {
public:
    virtual ~HookFileStoring() = default;
    // Whether anything exists at the path (a dangling symlink too).
    virtual bool fileExists(const std::filesystem::path& path) const = 0;
    // A missing or empty file reads as an empty object; anything that is not strictly a JSON
    // object, or that could not be written back value for value, fails.
    virtual Result<nlohmann::json> readObject(const std::filesystem::path& path) const = 0;
    // Creates the folder, keeps the file as the user had it ("<file>.tovrin.orig", once and for
    // good, while `isUsersOwn` says it holds nothing of ours yet), refreshes "<file>.tovrin.bak"
    // and replaces the file atomically with pretty-printed JSON with sorted keys. A read-only
    // file is refused.
    virtual Result<void> write(const nlohmann::json& object, const std::filesystem::path& path,
                               bool isUsersOwn) = 0;
    // Removes the backup, then the file; a missing file is no failure, a file that is not a
    // regular one or is read-only is refused. The original stays.
    virtual Result<void> remove(const std::filesystem::path& path) = 0;
};

} // namespace tovrin
