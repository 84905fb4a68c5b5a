#pragma once

#include <QWidget>
#include <functional>

namespace tovrin {

class FloatingChipView;

// The chip's window: frameless, above other windows, never taking the focus, translucent so that the
// chip draws its own rounded body and shadow, and exactly as large as its content.
class FloatingChipPanel : public QWidget {
public:
    explicit FloatingChipPanel(FloatingChipView* view);

    FloatingChipView* view() const { return m_view; }

    // The window moved, by a drag or by a new frame.
    std::function<void()> onMove;
    // The window is on screen again after a show: a window manager has taken it on by now.
    std::function<void()> onExposed;

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void moveEvent(QMoveEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void showEvent(QShowEvent* event) override;

private:
    FloatingChipView* m_view;
    bool m_awaitingExpose = false;
};

} // namespace tovrin
