#pragma once

#include <QPushButton>

class QLabel;

namespace tovrin {

class ProgressSpinner;

// A push button whose label can lead with a small spinner while the work it started runs. Its
// accessible name is its label's text.
class SpinnerButton : public QPushButton {
public:
    SpinnerButton(const QColor& spinnerColor, QWidget* parent = nullptr);

    void setLabel(const QString& text, bool spinning);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override { return sizeHint(); }

private:
    ProgressSpinner* m_spinner;
    QLabel* m_label;
};

} // namespace tovrin
