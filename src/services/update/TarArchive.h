#pragma once

#include "core/Result.h"

#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

// Gzip-compressed tar archives, read by the system's tar as a child process that is waited for.
// Failures carry tar's last words, such as a full disk.
namespace tovrin::TarArchive {

// The names of the archive's members, as tar lists them.
Result<std::vector<std::string>, std::string> members(const std::filesystem::path& archive);

// Whether a member lands inside the folder the archive is unpacked in: not absolute, no ".." part.
bool staysInside(std::string_view member);

// Unpacks into `folder`, which exists; files belong to the user who runs this.
Result<void, std::string> extract(const std::filesystem::path& archive, const std::filesystem::path& folder);

} // namespace tovrin::TarArchive
