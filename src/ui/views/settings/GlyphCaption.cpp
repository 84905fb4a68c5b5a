#include "ui/views/settings/GlyphCaption.h"

#include "ui/theme/ForgeTheme.h"
#include "ui/views/settings/SettingsSymbols.h"

#include <QFontMetrics>
#include <QHBoxLayout>
#include <QLabel>
#include <QPainter>
#include <QPainterPath>
#include <QPainterPathStroker>
#include <QPolygonF>
#include <cmath>
#include <functional>
#include <map>
#include <string>

namespace tovrin {

namespace {

constexpr double captionSize = 11;
constexpr double glyphSide = 12;
// In the theme's 24-unit design square, as its own glyphs are.
constexpr double designSide = 24;

QPainterPath stroked(const QPainterPath& centreLine, double width) {
    QPainterPathStroker stroker;
    stroker.setWidth(width);
    stroker.setCapStyle(Qt::RoundCap);
    stroker.setJoinStyle(Qt::RoundJoin);
    return stroker.createStroke(centreLine).simplified();
}

QPainterPath triangleOutline() {
    QPainterPath outline;
    outline.addPolygon(QPolygonF({{12, 3.5}, {21.5, 20}, {2.5, 20}, {12, 3.5}}));
    return outline;
}

QPainterPath exclamationMark() {
    QPainterPath bar;
    bar.moveTo(12, 9.2);
    bar.lineTo(12, 13.6);
    QPainterPath dot;
    dot.addEllipse(QPointF(12, 16.8), 1.35, 1.35);
    return stroked(bar, 2.4).united(dot);
}

QPainterPath warningFilled() {
    // The outline stroked wide rounds the triangle's corners.
    QPainterPath body = triangleOutline();
    body = body.united(stroked(triangleOutline(), 3));
    return body.subtracted(exclamationMark());
}

QPainterPath warningOutlined() {
    return stroked(triangleOutline(), 2).united(exclamationMark());
}

QPainterPath raisedHand() {
    QPainterPath silhouette;
    silhouette.addRoundedRect(QRectF(7, 10.5, 11, 11), 4.5, 4.5);
    const auto finger = [](double x, double top, double bottom) {
        QPainterPath line;
        line.moveTo(x, bottom);
        line.lineTo(x, top);
        return stroked(line, 2.6);
    };
    silhouette = silhouette.united(finger(8.5, 5.5, 12)).united(finger(11.5, 3.5, 12));
    silhouette = silhouette.united(finger(14.5, 4, 12)).united(finger(17.5, 6.5, 13));
    QPainterPath thumb;
    thumb.moveTo(8.5, 17);
    thumb.lineTo(4.5, 12.5);
    silhouette = silhouette.united(stroked(thumb, 2.8));
    return stroked(silhouette, 1.5);
}

// The three glyphs only captions use; anything else comes from the window's symbols.
const QPainterPath* captionGlyph(std::string_view name) {
    static const std::map<std::string, std::function<QPainterPath()>, std::less<>> builders{
        {"exclamationmark.triangle.fill", warningFilled},
        {"exclamationmark.triangle", warningOutlined},
        {"hand.raised", raisedHand},
    };
    static std::map<std::string, QPainterPath, std::less<>> built;
    const auto builder = builders.find(name);
    if (builder == builders.end()) return nullptr;
    auto found = built.find(name);
    if (found == built.end()) found = built.emplace(builder->first, builder->second()).first;
    return &found->second;
}

QPixmap glyphPixmap(std::string_view name, const QColor& color, double devicePixelRatio) {
    const QPainterPath* own = captionGlyph(name);
    if (own == nullptr) return SettingsSymbols::pixmap(name, color, glyphSide, devicePixelRatio);
    const int pixels = static_cast<int>(std::ceil(glyphSide * devicePixelRatio));
    QPixmap image(pixels, pixels);
    image.setDevicePixelRatio(devicePixelRatio);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(color);
    painter.scale(glyphSide / designSide, glyphSide / designSide);
    painter.drawPath(*own);
    return image;
}

} // namespace

GlyphCaption::GlyphCaption(QWidget* parent)
    : QWidget(parent), m_glyph(new QLabel(this)), m_text(new QLabel(this)) {
    const QFont font = ForgeStyle::systemFont(captionSize);
    m_text->setFont(font);
    m_text->setWordWrap(true);
    // Paths and manual steps are there to be copied.
    m_text->setTextInteractionFlags(Qt::TextSelectableByMouse);
    // As tall as the first line, so the glyph stands centred on it however many lines follow.
    m_glyph->setFixedSize(static_cast<int>(glyphSide), QFontMetrics(font).height());
    m_glyph->setAlignment(Qt::AlignCenter);
    m_glyph->hide();

    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(5);
    row->addWidget(m_glyph, 0, Qt::AlignTop);
    row->addWidget(m_text, 1);
}

void GlyphCaption::setContent(const QString& text, const QColor& color, std::string_view glyph) {
    m_text->setText(text);
    QPalette palette = m_text->palette();
    palette.setColor(QPalette::WindowText, color);
    m_text->setPalette(palette);
    m_glyph->setVisible(!glyph.empty());
    if (!glyph.empty()) m_glyph->setPixmap(glyphPixmap(glyph, color, devicePixelRatioF()));
}

QString GlyphCaption::text() const {
    return m_text->text();
}

QColor GlyphCaption::color() const {
    return m_text->palette().color(QPalette::WindowText);
}

bool GlyphCaption::hasGlyph() const {
    return !m_glyph->isHidden();
}

} // namespace tovrin
