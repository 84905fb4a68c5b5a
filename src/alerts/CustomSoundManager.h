#pragma once

#include "alerts/AlertSound.h"
#include "core/Result.h"

#include <array>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tovrin {

// The user's own sounds: files copied into one folder (~/.tovrin/sounds in production). The
// folder is created only by an import or by showing it. Ids are "custom:" and the file name;
// no id ever names a file outside the folder.
class CustomSoundManager {
public:
    static constexpr std::string_view idPrefix = "custom:";
    static constexpr std::array<std::string_view, 3> supportedExtensions{"wav", "aiff", "aif"};

    struct ImportError {
        enum class Kind { unsupportedFormat, unreadable, copyFailed };
        Kind kind;
        // unsupportedFormat: the extension in lower case; unreadable: the file's path;
        // copyFailed: the system's description.
        std::string detail;

        // The words the user reads under the picker.
        std::string description() const;
        bool operator==(const ImportError&) const = default;
    };

    explicit CustomSoundManager(std::filesystem::path folder);

    const std::filesystem::path& folder() const { return m_folder; }

    // The supported files of the folder, hidden ones left out, in the file manager's order of
    // names. Empty when the folder can't be listed.
    std::vector<AlertSound> sounds() const;
    // The file of a custom id, when it exists in the folder.
    std::optional<std::filesystem::path> url(std::string_view id) const;
    // Copies the file into the folder under a free name; the source stays where it is.
    Result<AlertSound, ImportError> importSound(const std::filesystem::path& source) const;
    // Deletes the file of a custom id. An id without a file is no failure; the error is the
    // system's description.
    Result<void> remove(std::string_view id) const;
    // Creates the folder (with its parents); false when that failed.
    bool createFolder() const;

    // The file name of a custom id; nothing for other ids and for any name that could leave the
    // folder (a slash, ".", "..", an empty name).
    static std::optional<std::string> filename(std::string_view id);
    // A file name without its extension, as the picker shows it.
    static std::string displayName(const std::filesystem::path& file);
    // The extension without its dot, as it stands; "" for none and for hidden names like ".wav".
    static std::string extensionOf(const std::filesystem::path& file);
    static bool isSupported(std::string_view extension);

private:
    AlertSound soundAt(const std::filesystem::path& file) const;
    std::filesystem::path availableURL(const std::filesystem::path& source) const;

    std::filesystem::path m_folder;
};

// Orders names as a file manager does: runs of digits by their value, letters ignoring case.
// Negative, zero or positive like strcmp.
int naturalCompare(std::string_view a, std::string_view b);

} // namespace tovrin
