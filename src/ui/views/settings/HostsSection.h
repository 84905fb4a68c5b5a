#pragma once

#include "ui/views/settings/SettingsGroup.h"

#include <string>
#include <vector>

class QLabel;
class QLineEdit;
class QPushButton;
class QVBoxLayout;

namespace tovrin {

class PreferencesStore;

// The remote hosts whose agents are watched over ssh: one row per host with its Remove button, and
// a field with Add host under them. A refused destination is said in red under the field.
class HostsSection : public SettingsGroup {
public:
    explicit HostsSection(PreferencesStore& preferences, QWidget* parent = nullptr);

    QLineEdit* destinationField() const { return m_destination; }
    QPushButton* addButton() const { return m_add; }
    const std::vector<QPushButton*>& removeButtons() const { return m_removeButtons; }
    QLabel* refusal() const { return m_refusal; }

private:
    void add();
    void refresh();

    PreferencesStore& m_preferences;
    QWidget* m_hostRows;
    QVBoxLayout* m_hostRowsLayout;
    std::vector<std::string> m_shownHosts;
    std::vector<QPushButton*> m_removeButtons;
    QLineEdit* m_destination;
    QPushButton* m_add;
    QLabel* m_refusal;
};

} // namespace tovrin
