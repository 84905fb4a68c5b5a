#include "ui/theme/FireText.h"

#include "ui/theme/FlamePainting.h"
#include "ui/theme/FlickerSchedule.h"
#include "ui/theme/ForgeTheme.h"
#include "ui/theme/MotionSettings.h"
#include "ui/theme/SoftGlow.h"

#include <QFontMetricsF>
#include <QPainter>
#include <cmath>

namespace tovrin {

FireText::FireText(const QString& text, const QFont& font, double tracking, QWidget* parent)
    : QWidget(parent) {
    QFont spaced = font;
    spaced.setLetterSpacing(QFont::AbsoluteSpacing, tracking);
    const QFontMetricsF metrics(spaced);
    m_lineBox = QRectF(glowMargin, glowMargin, metrics.horizontalAdvance(text), metrics.height());
    m_glyphs.addText(glowMargin, glowMargin + metrics.ascent(), spaced, text);
    setAttribute(Qt::WA_TranslucentBackground);
    setAccessibleName(text);
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
}

FireText::~FireText() {
    FlickerSchedule::shared().leave(this);
}

QSize FireText::sizeHint() const {
    return QSize(static_cast<int>(std::ceil(m_lineBox.width())) + 2 * glowMargin,
                 static_cast<int>(std::ceil(m_lineBox.height())) + 2 * glowMargin);
}

FireTextMode FireText::mode() const {
    return fireTextMode(m_flame.has_value(), reduceMotion());
}

void FireText::setFlame(std::optional<FlamePalette> flame) {
    m_flame = flame;
    followSchedule();
    update();
}

void FireText::followSchedule() {
    if (isVisible() && needsFlickerSchedule(mode()))
        FlickerSchedule::shared().join(this);
    else
        FlickerSchedule::shared().leave(this);
}

void FireText::showEvent(QShowEvent*) {
    followSchedule();
}

void FireText::hideEvent(QHideEvent*) {
    FlickerSchedule::shared().leave(this);
}

void FireText::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    const FireTextMode current = mode();
    if (current == FireTextMode::flat) {
        painter.setBrush(ForgeStyle::qColor(ForgeTheme::bronze));
        painter.drawPath(m_glyphs);
        return;
    }
    const FlameCurves::FireTextFrame frame = current == FireTextMode::still
                                                 ? FlameCurves::fireTextStillFrame(*m_flame)
                                                 : FlameCurves::fireTextFrame(*m_flame, FlamePainting::now());
    for (const FlameCurves::Glow& glow : {frame.outerGlow, frame.innerGlow})
        SoftGlow::paint(painter, m_glyphs, ForgeStyle::qColor(glow.color), glow.opacity, glow.radius);
    painter.setBrush(FlamePainting::gradient(frame.fill, frame.brightness, m_lineBox));
    painter.drawPath(m_glyphs);
}

} // namespace tovrin
