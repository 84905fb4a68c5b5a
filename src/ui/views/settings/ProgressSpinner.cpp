#include "ui/views/settings/ProgressSpinner.h"

#include "ui/theme/MotionSettings.h"

#include <QPainter>
#include <algorithm>

namespace tovrin {

namespace {

constexpr int spokes = 8;
constexpr int turnMilliseconds = 90;

} // namespace

ProgressSpinner::ProgressSpinner(const QColor& color, int side, QWidget* parent)
    : QWidget(parent), m_color(color) {
    setFixedSize(side, side);
    setAttribute(Qt::WA_TranslucentBackground);
    m_turn.setInterval(turnMilliseconds);
    connect(&m_turn, &QTimer::timeout, this, [this] {
        m_leadingSpoke = (m_leadingSpoke + 1) % spokes;
        update();
    });
}

void ProgressSpinner::showEvent(QShowEvent*) {
    // With reduced motion the wheel stands still; the status text still says what goes on.
    if (!reduceMotion()) m_turn.start();
}

void ProgressSpinner::hideEvent(QHideEvent*) {
    m_turn.stop();
}

void ProgressSpinner::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const double radius = width() / 2.0;
    painter.translate(radius, radius);
    QPen pen(m_color, std::max(1.5, radius / 4.5), Qt::SolidLine, Qt::RoundCap);
    for (int index = 0; index < spokes; ++index) {
        // The leading spoke is the brightest; those behind it fade.
        const int behind = (m_leadingSpoke - index + spokes) % spokes;
        QColor color = m_color;
        color.setAlphaF(static_cast<float>(m_color.alphaF() * (1.0 - 0.8 * behind / (spokes - 1))));
        pen.setColor(color);
        painter.setPen(pen);
        painter.save();
        painter.rotate(360.0 * index / spokes);
        painter.drawLine(QPointF(0, -radius * 0.45), QPointF(0, -radius * 0.85));
        painter.restore();
    }
}

} // namespace tovrin
