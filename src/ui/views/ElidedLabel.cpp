#include "ui/views/ElidedLabel.h"

#include <QFontMetrics>
#include <QPainter>
#include <algorithm>

namespace tovrin {

ElidedLabel::ElidedLabel(const QFont& font, const QColor& color, QWidget* parent)
    : QWidget(parent), m_color(color) {
    setFont(font);
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
}

void ElidedLabel::setText(const QString& text, qsizetype keptTail) {
    if (text == m_text && keptTail == m_keptTail) return;
    m_text = text;
    m_keptTail = std::clamp<qsizetype>(keptTail, 0, text.size());
    updateGeometry();
    update();
}

void ElidedLabel::setColor(const QColor& color) {
    if (color == m_color) return;
    m_color = color;
    update();
}

QString ElidedLabel::shownText() const {
    const QFontMetrics metrics(font());
    const int width = contentsRect().width();
    const QString whole = metrics.elidedText(m_text, Qt::ElideRight, width);
    if (whole == m_text || m_keptTail == 0) return whole;
    const QString tail = m_text.right(m_keptTail);
    const int room = std::max(0, width - metrics.horizontalAdvance(tail));
    return metrics.elidedText(m_text.left(m_text.size() - m_keptTail), Qt::ElideRight, room) + tail;
}

QSize ElidedLabel::sizeHint() const {
    const QFontMetrics metrics(font());
    const QMargins m = contentsMargins();
    return {metrics.horizontalAdvance(m_text) + m.left() + m.right(),
            metrics.height() + m.top() + m.bottom()};
}

QSize ElidedLabel::minimumSizeHint() const {
    return {contentsMargins().left() + contentsMargins().right(), sizeHint().height()};
}

void ElidedLabel::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::TextAntialiasing);
    painter.setPen(m_color);
    painter.drawText(contentsRect(), Qt::AlignLeft | Qt::AlignVCenter | Qt::TextSingleLine, shownText());
}

} // namespace tovrin
