#pragma once

#include <filesystem>
#include <optional>
#include <string>

namespace tovrin::SoundTheme {

// The file of a sound-theme event, per the XDG sound theme layout:
// <data dir>/sounds/<theme>/stereo/<event>.<oga|ogg|wav>, in $XDG_DATA_HOME, then each of
// $XDG_DATA_DIRS; the theme, the themes it inherits, then "freedesktop"; and if the event has no
// file, its shorter forms ("message-new-instant", "message-new", "message").
std::optional<std::filesystem::path> find(const std::string& themeName, const std::string& eventName);

} // namespace tovrin::SoundTheme
