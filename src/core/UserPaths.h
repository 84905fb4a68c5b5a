#pragma once

#include <filesystem>
#include <vector>

namespace tovrin::UserPaths {

// $HOME, else the password database's home folder.
std::filesystem::path home();
// $XDG_CONFIG_HOME when absolute, else ~/.config.
std::filesystem::path configHome();
// $XDG_CACHE_HOME when absolute, else ~/.cache.
std::filesystem::path cacheHome();
// $XDG_STATE_HOME when absolute, else ~/.local/state.
std::filesystem::path stateHome();
// The folders of shared application data, most personal first: $XDG_DATA_HOME when absolute, else
// ~/.local/share, then each absolute entry of $XDG_DATA_DIRS (default /usr/local/share:/usr/share).
std::vector<std::filesystem::path> dataFolders();
// The "applications" folder of each data folder: where desktop entries live.
std::vector<std::filesystem::path> applicationFolders();
// Where the defaults file lives: <configHome>/tovrin/defaults.json.
std::filesystem::path defaultsFile();
// AGENT_STATUS_DIR (tilde expanded) when set and not empty, else ~/.agent-status.
// Worked out afresh on every call.
std::filesystem::path statusDirectory();
// A leading "~" or "~/" replaced by the home folder.
std::filesystem::path expandTilde(const std::string& path);

} // namespace tovrin::UserPaths
