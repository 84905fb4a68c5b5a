#pragma once

#include <QColor>
#include <QString>
#include <QWidget>
#include <string_view>

class QLabel;

namespace tovrin {

// A line of small text in one colour, wrapped, with an optional glyph before its first line.
class GlyphCaption : public QWidget {
public:
    explicit GlyphCaption(QWidget* parent = nullptr);

    // An empty glyph name shows the text alone.
    void setContent(const QString& text, const QColor& color, std::string_view glyph = {});
    QString text() const;
    QColor color() const;
    bool hasGlyph() const;

private:
    QLabel* m_glyph;
    QLabel* m_text;
};

} // namespace tovrin
