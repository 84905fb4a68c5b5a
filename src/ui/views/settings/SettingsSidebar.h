#pragma once

#include "ui/viewmodels/SettingsCategory.h"

#include <QWidget>
#include <functional>

class QListWidget;

namespace tovrin {

// The settings window's list of categories over iron; arrow keys move the selection.
class SettingsSidebar : public QWidget {
public:
    static constexpr int sidebarWidth = 190;

    explicit SettingsSidebar(std::function<void(SettingsCategory)> onSelect, QWidget* parent = nullptr);

    SettingsCategory selection() const;
    void select(SettingsCategory category);
    QListWidget* list() const { return m_list; }

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QListWidget* m_list;
};

} // namespace tovrin
