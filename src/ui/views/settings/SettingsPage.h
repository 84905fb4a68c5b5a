#pragma once

#include <QScrollArea>

class QVBoxLayout;

namespace tovrin {

// One category's groups in a column that scrolls, over whatever its parent paints.
class SettingsPage : public QScrollArea {
public:
    explicit SettingsPage(QWidget* parent = nullptr);

    void addGroup(QWidget* group);

private:
    QVBoxLayout* m_column;
};

} // namespace tovrin
