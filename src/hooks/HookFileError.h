#pragma once

#include <filesystem>
#include <string>

// What the user reads when a configuration file is refused. Only the file's name is shown.
namespace tovrin::HookFileError {

inline std::string unreadableJSON(const std::filesystem::path& file) {
    return file.filename().string() + " is not plain JSON (it may use comments). Tovrin left it untouched.";
}

// Writing through a link would edit a file elsewhere; replacing it would break the user's set-up.
inline std::string symbolicLink(const std::filesystem::path& file) {
    return file.filename().string() + " is a symbolic link. Tovrin left it untouched.";
}

inline std::string unencodable(const std::filesystem::path& file) {
    return file.filename().string() + " was not written: it would hold text that is not valid UTF-8.";
}

} // namespace tovrin::HookFileError
