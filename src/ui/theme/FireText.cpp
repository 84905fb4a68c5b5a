#include "ui/theme/FireText.h"

#include "ui/theme/FlamePainting.h"
#include "ui/theme/ForgeTheme.h"
#include "ui/theme/SoftGlow.h"

#include <QFontMetricsF>
#include <QPainter>
#include <cmath>

namespace tovrin {

FireText::FireText(const QString& text, const QFont& font, double tracking, QWidget* parent)
    : BurningWidget(parent) {
    QFont spaced = font;
    spaced.setLetterSpacing(QFont::AbsoluteSpacing, tracking);
    const QFontMetricsF metrics(spaced);
    m_lineBox = QRectF(glowMargin, glowMargin, metrics.horizontalAdvance(text), metrics.height());
    m_glyphs.addText(glowMargin, glowMargin + metrics.ascent(), spaced, text);
    setAccessibleName(text);
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
}

QSize FireText::sizeHint() const {
    return QSize(static_cast<int>(std::ceil(m_lineBox.width())) + 2 * glowMargin,
                 static_cast<int>(std::ceil(m_lineBox.height())) + 2 * glowMargin);
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
                                                 ? FlameCurves::fireTextStillFrame(*flame())
                                                 : FlameCurves::fireTextFrame(*flame(), FlamePainting::now());
    for (const FlameCurves::Glow& glow : {frame.outerGlow, frame.innerGlow})
        SoftGlow::paint(painter, m_glyphs, ForgeStyle::qColor(glow.color), glow.opacity, glow.radius);
    painter.setBrush(FlamePainting::gradient(frame.fill, frame.brightness, m_lineBox));
    painter.drawPath(m_glyphs);
}

} // namespace tovrin
