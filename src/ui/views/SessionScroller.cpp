#include "ui/views/SessionScroller.h"

#include "ui/theme/ForgeTheme.h"

#include <QEvent>
#include <QScrollBar>
#include <algorithm>

namespace tovrin {

SessionScroller::SessionScroller(QWidget* content, QWidget* parent) : QScrollArea(parent) {
    setFrameShape(QFrame::NoFrame);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setVerticalScrollBarPolicy(Qt::ScrollBarAsNeeded);
    setWidgetResizable(true);
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
    const QColor handle = ForgeStyle::qColor(ForgeTheme::bronze, 0.35);
    verticalScrollBar()->setStyleSheet(
        QStringLiteral("QScrollBar:vertical { background: transparent; width: 6px; margin: 2px 0; }"
                       "QScrollBar::handle:vertical { background: rgba(%1, %2, %3, %4); border-radius: 3px;"
                       " min-height: 24px; }"
                       "QScrollBar::add-line:vertical, QScrollBar::sub-line:vertical { height: 0; }"
                       "QScrollBar::add-page:vertical, QScrollBar::sub-page:vertical { background: none; }")
            .arg(handle.red())
            .arg(handle.green())
            .arg(handle.blue())
            .arg(handle.alpha()));
    setWidget(content);
    // The host's iron shows through; setting the widget had turned its fill on.
    setAutoFillBackground(false);
    viewport()->setAutoFillBackground(false);
    content->setAutoFillBackground(false);
    content->installEventFilter(this);
}

void SessionScroller::setHeightLimit(int limit) {
    m_heightLimit = std::max(0, limit);
    updateGeometry();
}

QSize SessionScroller::sizeHint() const {
    const QSize content = widget() ? widget()->sizeHint() : QSize();
    return {content.width(), std::min(content.height(), m_heightLimit)};
}

bool SessionScroller::eventFilter(QObject* watched, QEvent* event) {
    // The column grew or shrank: ask the host for a new height.
    if (watched == widget() && event->type() == QEvent::LayoutRequest) updateGeometry();
    return QScrollArea::eventFilter(watched, event);
}

} // namespace tovrin
