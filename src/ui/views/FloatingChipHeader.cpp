#include "ui/views/FloatingChipHeader.h"

#include "ui/theme/ForgeTheme.h"
#include "ui/theme/SoftGlow.h"
#include "ui/theme/Symbols.h"
#include "ui/views/QtText.h"
#include "ui/views/ViewAccessibility.h"

#include <QAccessible>
#include <QFontMetricsF>
#include <QPainter>
#include <QWindow>
#include <cmath>
#include <utility>

namespace tovrin {

namespace {

constexpr double paddingX = 14;
constexpr double paddingY = 10;
constexpr double spacing = 8;
// The eye is drawn as wide as a line of the 15 text is high, a little more for its lids.
constexpr double symbolWidth = 20;
// Before the chevron the flexible space keeps at least this much.
constexpr double chevronGap = 12;
constexpr double chevronSide = 11;
constexpr double chevronOpacity = 0.85;
constexpr double shadowOpacity = 0.25;
constexpr double shadowRadius = 1;
constexpr double shadowDrop = 0.5;

QFont summaryFont() {
    return ForgeStyle::systemFont(15, QFont::DemiBold);
}

QColor toneColor(ChipHeader::Tone tone) {
    return tone == ChipHeader::Tone::onFlame ? QColor(Qt::white) : ForgeStyle::qColor(ForgeTheme::ash);
}

} // namespace

FloatingChipHeader::FloatingChipHeader(QWidget* parent) : FlameFill(parent) {
    ViewAccessibility::install();
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
}

void FloatingChipHeader::setContent(ChipHeader::Content content) {
    if (content == m_content) return;
    const bool renamed = content.summary != m_content.summary;
    const bool unfolding = content.chevron != m_content.chevron;
    m_content = std::move(content);
    m_foreground = {};
    setFlame(m_content.flame);
    if (renamed || unfolding) updateGeometry();
    update();

    if (renamed) {
        QAccessibleEvent event(this, QAccessible::NameChanged);
        QAccessible::updateAccessibility(&event);
    }
    if (unfolding) {
        QAccessible::State changed;
        changed.expandable = changed.expanded = changed.collapsed = true;
        QAccessibleStateChangeEvent event(this, changed);
        QAccessible::updateAccessibility(&event);
    }
}

QSize FloatingChipHeader::sizeHint() const {
    const QFontMetricsF metrics(summaryFont());
    double width = paddingX + symbolWidth + spacing + metrics.horizontalAdvance(qText(m_content.summary));
    if (m_content.chevron) width += chevronGap + chevronSide;
    width += paddingX;
    return {static_cast<int>(std::ceil(width)), static_cast<int>(std::ceil(metrics.height() + 2 * paddingY))};
}

QSize FloatingChipHeader::minimumSizeHint() const {
    return sizeHint();
}

void FloatingChipHeader::resizeEvent(QResizeEvent* event) {
    m_foreground = {};
    FlameFill::resizeEvent(event);
}

const QImage& FloatingChipHeader::foreground() {
    const double ratio = devicePixelRatioF();
    if (!m_foreground.isNull() && m_foreground.devicePixelRatio() == ratio) return m_foreground;

    const QColor color = toneColor(m_content.tone);
    QImage glyphs(size() * ratio, QImage::Format_ARGB32_Premultiplied);
    glyphs.setDevicePixelRatio(ratio);
    glyphs.fill(Qt::transparent);
    {
        QPainter painter(&glyphs);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setRenderHint(QPainter::TextAntialiasing);
        const QFont font = summaryFont();
        const QFontMetricsF metrics(font);
        const double lineTop = (height() - metrics.height()) / 2;
        const QRectF line(paddingX, lineTop, width() - 2 * paddingX, metrics.height());

        Symbols::paint(painter, m_content.symbol, QRectF(line.left(), line.top(), symbolWidth, line.height()),
                       color);
        painter.setFont(font);
        painter.setPen(color);
        const double textLeft = line.left() + symbolWidth + spacing;
        painter.drawText(QPointF(textLeft, line.top() + metrics.ascent()), qText(m_content.summary));
        if (m_content.chevron) {
            painter.setOpacity(chevronOpacity);
            Symbols::paint(painter, *m_content.chevron,
                           QRectF(line.right() - chevronSide, line.center().y() - chevronSide / 2,
                                  chevronSide, chevronSide),
                           color);
        }
    }

    m_foreground = QImage(glyphs.size(), QImage::Format_ARGB32_Premultiplied);
    m_foreground.setDevicePixelRatio(ratio);
    m_foreground.fill(Qt::transparent);
    QPainter painter(&m_foreground);
    // Over a flame the light text needs a faint dark edge to stay legible.
    if (m_content.tone == ChipHeader::Tone::onFlame)
        SoftGlow::paint(painter, glyphs, QRectF(QPointF(0, shadowDrop), QSizeF(size())), Qt::black,
                        shadowOpacity, shadowRadius);
    painter.drawImage(QPointF(0, 0), glyphs);
    return m_foreground;
}

void FloatingChipHeader::paintEvent(QPaintEvent* event) {
    FlameFill::paintEvent(event);
    QPainter painter(this);
    painter.drawImage(QPointF(0, 0), foreground());
}

} // namespace tovrin
