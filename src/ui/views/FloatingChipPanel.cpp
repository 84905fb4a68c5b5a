#include "ui/views/FloatingChipPanel.h"

#include "ui/views/FloatingChipView.h"

#include <QWindow>

namespace tovrin {

FloatingChipPanel::FloatingChipPanel(FloatingChipView* view) : m_view(view) {
    setWindowFlags(Qt::Tool | Qt::FramelessWindowHint | Qt::WindowStaysOnTopHint |
                   Qt::WindowDoesNotAcceptFocus | Qt::NoDropShadowWindowHint);
    setAttribute(Qt::WA_ShowWithoutActivating);
    setAttribute(Qt::WA_TranslucentBackground);
    setFocusPolicy(Qt::NoFocus);
    setWindowTitle(QStringLiteral("Floating window"));
    m_view->setParent(this);
}

void FloatingChipPanel::moveEvent(QMoveEvent* event) {
    QWidget::moveEvent(event);
    if (onMove) onMove();
}

void FloatingChipPanel::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    m_view->setGeometry(rect());
}

void FloatingChipPanel::showEvent(QShowEvent* event) {
    QWidget::showEvent(event);
    m_awaitingExpose = true;
    if (QWindow* window = windowHandle()) window->installEventFilter(this);
}

bool FloatingChipPanel::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::Expose && m_awaitingExpose && watched == windowHandle() &&
        windowHandle()->isExposed()) {
        m_awaitingExpose = false;
        if (onExposed) onExposed();
    }
    return QWidget::eventFilter(watched, event);
}

} // namespace tovrin
