#pragma once

#include <QString>
#include <QWidget>

class QLabel;
class QLayout;
class QVBoxLayout;

namespace tovrin {

// One themed group of the settings window: an engraved heading over a card of rows.
class SettingsGroup : public QWidget {
public:
    explicit SettingsGroup(const QString& title, QWidget* parent = nullptr);

    void addRow(QWidget* row);
    void addRow(QLayout* row);
    // A line of small dim text, wrapped, as the card's next row.
    QLabel* addCaption(const QString& text);

private:
    QVBoxLayout* m_rows;
};

} // namespace tovrin
