#include "alerts/AlertSoundPickerViewModel.h"

#include "alerts/SoundCatalog.h"

#include <algorithm>

namespace tovrin {

AlertSoundPickerViewModel::AlertSoundPickerViewModel(const CustomSoundManager& manager,
                                                     SoundFileChoosing& chooser, FolderRevealer revealer)
    : customSounds(objectWillChange, {}), errorMessage(objectWillChange, std::nullopt), m_manager(manager),
      m_chooser(chooser), m_revealer(std::move(revealer)) {}

void AlertSoundPickerViewModel::refresh() {
    customSounds.set(m_manager.sounds());
}

std::optional<AlertSound> AlertSoundPickerViewModel::addSound() {
    const auto file = m_chooser.chooseSoundFile();
    if (!file) return std::nullopt;
    auto imported = m_manager.importSound(*file);
    if (!imported) {
        errorMessage.set(imported.error().description());
        return std::nullopt;
    }
    errorMessage.set(std::nullopt);
    customSounds.set(m_manager.sounds());
    return std::move(imported).value();
}

void AlertSoundPickerViewModel::remove(const std::string& id) {
    const auto removed = m_manager.remove(id);
    errorMessage.set(removed ? std::nullopt : std::optional<std::string>(removed.error()));
    customSounds.set(m_manager.sounds());
}

std::string AlertSoundPickerViewModel::removeSelection(const std::string& selection) {
    remove(selection);
    return std::string(SoundCatalog::fallbackId);
}

void AlertSoundPickerViewModel::revealFolder() {
    // A failure shows up in the file manager, which then has nothing to show.
    (void)m_manager.createFolder();
    if (m_revealer) m_revealer(m_manager.folder());
}

bool AlertSoundPickerViewModel::canRemove(const std::string& selection) {
    return CustomSoundManager::filename(selection).has_value();
}

bool AlertSoundPickerViewModel::isSelectionMissing(const std::string& selection) const {
    if (!CustomSoundManager::filename(selection)) return false;
    return std::ranges::none_of(customSounds(), [&](const AlertSound& s) { return s.id == selection; });
}

std::vector<AlertSoundSection> AlertSoundPickerViewModel::sections(const std::string& selection) const {
    std::vector<AlertSoundSection> result{
        {std::string(AlertSoundPickerText::themedSection), SoundCatalog::themed()},
        {std::string(AlertSoundPickerText::systemSection), SoundCatalog::system()},
    };
    if (!customSounds().empty())
        result.push_back({std::string(AlertSoundPickerText::customSection), customSounds()});
    if (isSelectionMissing(selection)) {
        // A missing id is always custom, so its name is the file name without extension.
        const auto name = *CustomSoundManager::filename(selection);
        result.push_back({std::string(AlertSoundPickerText::missingSection),
                          {{selection, CustomSoundManager::displayName(name),
                            AlertSound::Custom{m_manager.folder() / name}}}});
    }
    return result;
}

AlertSoundCaption AlertSoundPickerViewModel::caption() const {
    if (errorMessage()) return {*errorMessage(), true};
    return {std::string(AlertSoundPickerText::hint), false};
}

} // namespace tovrin
