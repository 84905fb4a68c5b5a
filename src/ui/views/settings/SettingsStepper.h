#pragma once

#include <QWidget>
#include <functional>

class QLabel;
class QPushButton;

namespace tovrin {

// A line of text that tells the value, and a pair of buttons that step it down or up.
class SettingsStepper : public QWidget {
public:
    explicit SettingsStepper(std::function<void(int direction)> onStep, QWidget* parent = nullptr);

    void showValue(const QString& text, bool canDecrease, bool canIncrease);

    QLabel* label() const { return m_label; }
    QPushButton* decreaseButton() const { return m_decrease; }
    QPushButton* increaseButton() const { return m_increase; }

private:
    QLabel* m_label;
    QPushButton* m_decrease;
    QPushButton* m_increase;
};

} // namespace tovrin
