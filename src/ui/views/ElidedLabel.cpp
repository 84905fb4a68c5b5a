#include "ui/views/ElidedLabel.h"

#include <QFontMetrics>
#include <QPainter>

namespace tovrin {

ElidedLabel::ElidedLabel(const QFont& font, const QColor& color, QWidget* parent)
    : QWidget(parent), m_color(color) {
    setFont(font);
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
}

void ElidedLabel::setText(const QString& text) {
    if (text == m_text) return;
    m_text = text;
    updateGeometry();
    update();
}

void ElidedLabel::setColor(const QColor& color) {
    if (color == m_color) return;
    m_color = color;
    update();
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
    const QRect box = contentsRect();
    const QString shown = QFontMetrics(font()).elidedText(m_text, Qt::ElideRight, box.width());
    painter.drawText(box, Qt::AlignLeft | Qt::AlignVCenter | Qt::TextSingleLine, shown);
}

} // namespace tovrin
