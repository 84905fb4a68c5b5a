#pragma once

#include <QColor>
#include <QTimer>
#include <QWidget>

namespace tovrin {

// A small indeterminate progress wheel: spokes fading round a circle, turning only while shown.
class ProgressSpinner : public QWidget {
public:
    ProgressSpinner(const QColor& color, int side, QWidget* parent = nullptr);

protected:
    void paintEvent(QPaintEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;

private:
    QColor m_color;
    QTimer m_turn;
    int m_leadingSpoke = 0;
};

} // namespace tovrin
