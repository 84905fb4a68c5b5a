#pragma once

#include "alerts/AlertSound.h"
#include "alerts/CustomSoundManager.h"
#include "alerts/SoundPlayer.h"

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tovrin {

// Turns an alert-sound id into the file to play: the seven themed sounds shipped as
// `<soundsFolder>/<id>.wav`, the fourteen system names through the desktop's sound theme, and
// custom ids through the user's folder.
class SoundCatalog {
public:
    // The fallback of the whole system: default setting, stand-in for a lost custom file, and the
    // selection after a custom sound is removed.
    static constexpr std::string_view fallbackId = "horn-of-gondor";

    static const std::vector<AlertSound>& themed();
    static const std::vector<AlertSound>& system();
    // The freedesktop sound-theme event that stands for a system name.
    static std::optional<std::string_view> themeEvent(std::string_view systemName);

    SoundCatalog(std::filesystem::path soundsFolder, const CustomSoundManager& custom,
                 const SoundPlayer& player);

    // The playable file for an id. A custom file that is gone or can't be decoded gives the
    // fallback horn; an unknown id, or a themed or system sound that can't be had, gives nothing.
    std::optional<std::filesystem::path> sound(std::string_view id) const;
    // Always a name: the catalogue's, the custom file's name without extension, else the id.
    std::string displayName(std::string_view id) const;

    const CustomSoundManager& custom() const { return m_custom; }

private:
    std::optional<std::filesystem::path> bundledURL(std::string_view id) const;
    std::optional<std::filesystem::path> decodable(std::optional<std::filesystem::path> file) const;

    std::filesystem::path m_soundsFolder;
    const CustomSoundManager& m_custom;
    const SoundPlayer& m_player;
};

} // namespace tovrin
