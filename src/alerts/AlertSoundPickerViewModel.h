#pragma once

#include "alerts/AlertSound.h"
#include "alerts/CustomSoundManager.h"
#include "alerts/SoundFileChoosing.h"
#include "core/Property.h"
#include "core/Signal.h"

#include <filesystem>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tovrin {

// The words of the sound picker and of its file dialog.
namespace AlertSoundPickerText {
inline constexpr std::string_view label = "Sound";
inline constexpr std::string_view themedSection = "Tovrin";
inline constexpr std::string_view systemSection = "System";
inline constexpr std::string_view customSection = "Yours";
inline constexpr std::string_view missingSection = "Missing";
inline constexpr std::string_view addButton = "Add Sound…";
inline constexpr std::string_view removeButton = "Remove";
inline constexpr std::string_view openFolderButton = "Open Folder";
inline constexpr std::string_view hint =
    "Your own sounds live in ~/.tovrin/sounds — WAV or AIFF, and they survive updates.";
inline constexpr std::string_view chooserTitle = "Choose an Alert Sound";
inline constexpr std::string_view chooserPrompt = "Add";
inline constexpr std::string_view chooserMessage =
    "Pick a WAV or AIFF file. It's copied into ~/.tovrin/sounds.";
} // namespace AlertSoundPickerText

// One titled group of rows of the pop-up list; each row shows its displayName and stands for its id.
struct AlertSoundSection {
    std::string title;
    std::vector<AlertSound> rows;
    bool operator==(const AlertSoundSection&) const = default;
};

// The caption under the buttons: the last error (in red), else the hint.
struct AlertSoundCaption {
    std::string text;
    bool isError = false;
    bool operator==(const AlertSoundCaption&) const = default;
};

// The model behind the sound picker: the user's own sounds, adding and removing them, and the
// last error. The selection itself lives in the `alertSound` setting and is passed in. Main loop only.
class AlertSoundPickerViewModel {
public:
    // Shows a folder in the file manager.
    using FolderRevealer = std::function<void(const std::filesystem::path&)>;

    AlertSoundPickerViewModel(const CustomSoundManager& manager, SoundFileChoosing& chooser,
                              FolderRevealer revealer);
    AlertSoundPickerViewModel(const AlertSoundPickerViewModel&) = delete;
    AlertSoundPickerViewModel& operator=(const AlertSoundPickerViewModel&) = delete;

    Signal<> objectWillChange;
    Property<std::vector<AlertSound>> customSounds;
    Property<std::optional<std::string>> errorMessage;

    // Re-reads the folder; the view calls it each time it appears, so files put there by hand show.
    void refresh();
    // Asks for a file and imports it. A cancelled dialog changes nothing, an old error included.
    std::optional<AlertSound> addSound();
    void remove(const std::string& id);
    // The remove button: removes the selected sound and gives the selection to show next, the
    // fallback sound, also when the removal failed and its error is showing.
    std::string removeSelection(const std::string& selection);
    void revealFolder();

    // Only a custom id can be removed.
    static bool canRemove(const std::string& selection);
    // A custom id whose file isn't among the listed sounds; other ids, unknown ones included, never are.
    bool isSelectionMissing(const std::string& selection) const;
    std::vector<AlertSoundSection> sections(const std::string& selection) const;
    AlertSoundCaption caption() const;

private:
    const CustomSoundManager& m_manager;
    SoundFileChoosing& m_chooser;
    FolderRevealer m_revealer;
};

} // namespace tovrin
