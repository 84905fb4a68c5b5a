#pragma once

#include <functional>
#include <map>
#include <optional>
#include <string>
#include <string_view>

// Desktop-entry style key files (application and autostart entries, sound-theme indexes), read the
// way the desktop's own reader does: blanks around "=" ignored, comments and other groups skipped,
// the last of repeated keys wins.
namespace tovrin::KeyFile {

using Group = std::map<std::string, std::string, std::less<>>;

// The keys of the group named `name` (without brackets); empty when the text has no such group.
Group group(std::string_view text, std::string_view name);

// The value of `key`, if present.
std::optional<std::string> value(const Group& group, std::string_view key);

// A boolean value, with the numeric forms the desktop also takes; nullopt for anything else.
std::optional<bool> boolean(std::string_view value);

} // namespace tovrin::KeyFile
