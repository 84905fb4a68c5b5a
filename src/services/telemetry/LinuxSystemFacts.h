#pragma once

#include "services/telemetry/DeviceFacts.h"

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tovrin {

// Where the system's facts are read from; tests point them at sample files.
struct SystemFactFiles {
    std::vector<std::filesystem::path> osRelease = {"/etc/os-release", "/usr/lib/os-release"};
    std::filesystem::path productName = "/sys/devices/virtual/dmi/id/product_name";
};

// VERSION_ID of an os-release file, unquoted; none when it is missing or empty.
std::optional<std::string> osReleaseVersionID(std::string_view content);

// "Linux " with the version, its major and its major.minor forms; "Linux" alone for a system that
// names no version (a rolling release).
void fillSystemVersions(SystemFacts& facts, const std::optional<std::string>& versionID);

// The locale from the value that decides messages (LC_ALL, else LC_MESSAGES, else LANG) and the
// LANGUAGE list of preferred languages.
LocaleFacts localeFacts(std::string_view locale, std::string_view languageList);

// Reads everything: the files, uname and the environment.
SystemFacts readSystemFacts(const SystemFactFiles& files = {});

} // namespace tovrin
