#pragma once

#include <QComboBox>

namespace tovrin {

// A drop-down list drawn in the forge's colours whatever the desktop's style, with a chevron at
// its right end.
class SettingsComboBox : public QComboBox {
public:
    explicit SettingsComboBox(QWidget* parent = nullptr);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;
};

} // namespace tovrin
