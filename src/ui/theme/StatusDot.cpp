#include "ui/theme/StatusDot.h"

#include "ui/theme/SoftGlow.h"

#include <QPainter>
#include <QPainterPath>

namespace tovrin {

namespace {

constexpr double glowOpacity = 0.8;
constexpr double glowRadius = 4;

} // namespace

StatusDot::StatusDot(const QColor& color, bool glows, QWidget* parent)
    : QWidget(parent), m_color(color), m_glows(glows) {
    setFixedSize(diameter + 2 * glowMargin, diameter + 2 * glowMargin);
    setAttribute(Qt::WA_TranslucentBackground);
}

void StatusDot::setColor(const QColor& color) {
    m_color = color;
    update();
}

void StatusDot::setGlows(bool glows) {
    m_glows = glows;
    update();
}

void StatusDot::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    QPainterPath dot;
    dot.addEllipse(QRectF(glowMargin, glowMargin, diameter, diameter));
    if (m_glows) SoftGlow::paint(painter, dot, m_color, glowOpacity, glowRadius);
    painter.setPen(Qt::NoPen);
    painter.setBrush(m_color);
    painter.drawPath(dot);
}

} // namespace tovrin
