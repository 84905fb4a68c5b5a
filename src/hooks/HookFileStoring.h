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
    // object (comments, trailing commas, an array, white space only, invalid UTF-8) fails.
    virtual Result<nlohmann::json> readObject(const std::filesystem::path& path) const = 0;
    // Creates the folder, refreshes "<file>.tovrin.bak", writes pretty-printed JSON with sorted
    // keys to "<file>.tmp.<pid>" and renames it over the file.
    virtual Result<void> write(const nlohmann::json& object, const std::filesystem::path& path) = 0;
    // Removes the backup, then the file; a missing file is no failure.
    virtual Result<void> remove(const std::filesystem::path& path) = 0;
};

} // namespace tovrin
