#pragma once

#include "core/Result.h"

#include <filesystem>
#include <string>
#include <string_view>
#include <sys/types.h>

namespace tovrin {

// Writes `content` to a temp file "<name>.tmp.<pid>" beside `path` and renames it over `path`,
// so that readers see either the old file or the whole new one. On failure the old file is
// untouched and the temp file removed; the error says which step failed.
Result<void> writeFileAtomically(const std::filesystem::path& path, std::string_view content,
                                 mode_t mode = 0644);

// Creates `path` with `content`, whole, unless something is already there: then nothing changes
// and it succeeds, so that of several processes exactly one writes it.
Result<void> createFileOnce(const std::filesystem::path& path, std::string_view content, mode_t mode = 0644);

// Reads a whole regular file; fails for anything else (missing, directory, FIFO ...).
Result<std::string> readWholeFile(const std::filesystem::path& path);

// Whether anything is at the path, a dangling symlink included; never follows links.
bool existsAt(const std::filesystem::path& path);

} // namespace tovrin
