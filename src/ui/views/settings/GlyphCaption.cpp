#include "ui/views/settings/GlyphCaption.h"

#include "ui/theme/ForgeTheme.h"
#include "ui/theme/Symbols.h"

#include <QFontMetrics>
#include <QHBoxLayout>
#include <QLabel>

namespace tovrin {

namespace {

constexpr double captionSize = 11;
constexpr double glyphSide = 12;

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
    if (!glyph.empty()) m_glyph->setPixmap(Symbols::pixmap(glyph, color, glyphSide, devicePixelRatioF()));
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
