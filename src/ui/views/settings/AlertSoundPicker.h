#pragma once

#include "alerts/AlertSoundPickerViewModel.h"
#include "core/Property.h"
#include "core/Signal.h"

#include <QWidget>
#include <memory>
#include <string>
#include <vector>

class QLabel;
class QPushButton;

namespace tovrin {

class SettingsComboBox;
class SoundCatalog;
class SoundPlayer;

// What the sound picker plays, imports and shows.
struct AlertSoundServices {
    const SoundCatalog& catalog; // its custom sounds are the ones the picker manages
    SoundPlayer& player;         // previews, straight past the alert's rate limit
    AlertSoundPickerViewModel::FolderRevealer revealFolder;
    SoundFileChoosing* chooser = nullptr; // the desktop's open dialog when none is given
};

// Chooses the alert sound: a sectioned list over the selection, buttons to add, remove and show the
// user's own sounds, and a line for the last error. A new selection plays at once.
class AlertSoundPicker : public QWidget {
public:
    AlertSoundPicker(Property<std::string>& selection, const AlertSoundServices& services,
                     QWidget* parent = nullptr);

    // Only the list follows the sound switch; the buttons stay usable.
    void setListEnabled(bool enabled);

    SettingsComboBox* list() const { return m_list; }
    QPushButton* addButton() const { return m_add; }
    QPushButton* removeButton() const { return m_remove; }
    QPushButton* openFolderButton() const { return m_openFolder; }
    QLabel* caption() const { return m_caption; }

protected:
    void showEvent(QShowEvent* event) override;

private:
    void selectionChanged(const std::string& id);
    void scheduleSync();
    void sync();
    void rebuildList(const std::vector<AlertSoundSection>& sections);

    Property<std::string>& m_selection;
    const SoundCatalog& m_catalog;
    SoundPlayer& m_player;
    std::unique_ptr<SoundFileChoosing> m_ownChooser;
    AlertSoundPickerViewModel m_model;

    QLabel* m_label;
    SettingsComboBox* m_list;
    QPushButton* m_add;
    QPushButton* m_remove;
    QPushButton* m_openFolder;
    QLabel* m_caption;

    std::string m_current;
    std::vector<AlertSoundSection> m_shownSections;
    bool m_syncPending = false;
    Subscription m_selectionSubscription;
};

} // namespace tovrin
