#include "ui/theme/ForgeToggle.h"

#include "ui/theme/ForgeTheme.h"
#include "ui/theme/MotionSettings.h"
#include "ui/theme/SoftGlow.h"

#include <QFontMetrics>
#include <QPainter>
#include <QPainterPath>
#include <algorithm>

namespace tovrin {

namespace {

constexpr double disabledOpacity = 0.45;
constexpr int thumbPadding = 2;
// The track's glow needs a little room beyond the capsule.
constexpr int glowRoom = 4;
constexpr int motionMilliseconds = 250;

} // namespace

ForgeToggle::ForgeToggle(const QString& label, QWidget* parent) : QAbstractButton(parent) {
    setText(label);
    setCheckable(true);
    setFont(ForgeStyle::systemFont(13));
    setCursor(Qt::PointingHandCursor);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    // A quick spring: a short overshoot that settles, like a damped spring of a quarter second.
    m_motion.setDuration(motionMilliseconds);
    QEasingCurve spring(QEasingCurve::OutBack);
    spring.setOvershoot(0.9);
    m_motion.setEasingCurve(spring);
    connect(&m_motion, &QVariantAnimation::valueChanged, this, [this](const QVariant& value) {
        m_thumbPosition = value.toDouble();
        update();
    });
    connect(this, &QAbstractButton::toggled, this, [this](bool on) { moveThumb(on); });
}

QSize ForgeToggle::sizeHint() const {
    const QFontMetrics metrics(font());
    const int labelWidth = text().isEmpty() ? 0 : metrics.horizontalAdvance(text()) + spacing;
    return QSize(labelWidth + trackWidth + glowRoom, std::max(trackHeight, metrics.height()) + 2 * glowRoom);
}

QSize ForgeToggle::minimumSizeHint() const {
    return sizeHint();
}

void ForgeToggle::moveThumb(bool on) {
    const double target = on ? 1 : 0;
    m_motion.stop();
    if (reduceMotion() || !isVisible()) {
        m_thumbPosition = target;
        update();
        return;
    }
    m_motion.setStartValue(m_thumbPosition);
    m_motion.setEndValue(target);
    m_motion.start();
}

QRectF ForgeToggle::trackRect() const {
    return QRectF(width() - glowRoom - trackWidth, (height() - trackHeight) / 2.0, trackWidth, trackHeight);
}

void ForgeToggle::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setOpacity(isEnabled() ? 1.0 : disabledOpacity);
    const QRectF track = trackRect();

    if (!text().isEmpty()) {
        painter.setPen(ForgeStyle::qColor(ForgeTheme::ash));
        painter.setFont(font());
        const QRectF labelBox(0, 0, track.left() - spacing, height());
        painter.drawText(
            labelBox, Qt::AlignLeft | Qt::AlignVCenter,
            QFontMetrics(font()).elidedText(text(), Qt::ElideRight, static_cast<int>(labelBox.width())));
    }

    QPainterPath capsule;
    capsule.addRoundedRect(track, trackHeight / 2.0, trackHeight / 2.0);
    // The colour changes at once; only the thumb travels.
    const bool on = isChecked();
    if (on) SoftGlow::paint(painter, capsule, ForgeStyle::qColor(ForgeTheme::workingAmber), 0.55, 5);
    painter.fillPath(capsule, ForgeStyle::qColor(on ? ForgeTheme::workingAmber : ForgeTheme::edge));
    QPainterPath border;
    border.addRoundedRect(track.adjusted(0.5, 0.5, -0.5, -0.5), trackHeight / 2.0 - 0.5,
                          trackHeight / 2.0 - 0.5);
    painter.strokePath(border, QPen(QColor(255, 255, 255, qRound(0.08 * 255)), 1));

    const double travel = trackWidth - thumbSide - 2 * thumbPadding;
    const QRectF thumb(track.left() + thumbPadding + travel * m_thumbPosition, track.top() + thumbPadding,
                       thumbSide, thumbSide);
    QPainterPath disc;
    disc.addEllipse(thumb);
    SoftGlow::paint(painter, disc.translated(0, 0.5), Qt::black, 0.35, 1);
    painter.fillPath(disc, Qt::white);
}

} // namespace tovrin
