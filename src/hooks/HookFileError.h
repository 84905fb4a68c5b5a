#pragma once

#include "hooks/ForeignJson.h"

#include <filesystem>
#include <string>

// What the user reads when a configuration file is refused. Only the file's name is shown.
namespace tovrin::HookFileError {

inline std::string untouched(const std::filesystem::path& file, const std::string& why) {
    return file.filename().string() + why + ". Tovrin left it untouched.";
}

inline std::string unreadableJSON(const std::filesystem::path& file) {
    return untouched(file, " is not plain JSON (it may use comments)");
}

// Writing through a link would edit a file elsewhere; replacing it would break the user's set-up.
inline std::string symbolicLink(const std::filesystem::path& file) {
    return untouched(file, " is a symbolic link");
}

inline std::string notRegularFile(const std::filesystem::path& file) {
    return untouched(file, " is not a regular file");
}

// The user (or their tooling) made it read-only on purpose; replacing it would undo that.
inline std::string readOnly(const std::filesystem::path& file) {
    return untouched(file, " is read-only");
}

inline std::string unencodable(const std::filesystem::path& file) {
    return file.filename().string() + " was not written: it would hold text that is not valid UTF-8.";
}

inline std::string tooLargeToWrite(const std::filesystem::path& file) {
    return untouched(file, " would grow past " + std::to_string(ForeignJson::maxWriteBytes >> 20) +
                               " MB when written");
}

// `clause` says which value of the user's has no room for our entries.
inline std::string noPlaceForHooks(const std::filesystem::path& file, const std::string& clause) {
    return untouched(file, ": " + clause);
}

std::string unreadable(const std::filesystem::path& file, const ForeignJson::ReadProblem& problem);

} // namespace tovrin::HookFileError
