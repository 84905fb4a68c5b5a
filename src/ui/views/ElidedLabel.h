#pragma once

#include <QColor>
#include <QFont>
#include <QString>
#include <QWidget>

namespace tovrin {

// One line of text in one colour, cut with an ellipsis when narrower than its text, so long titles
// and paths never widen a fixed-width panel. Contents margins pad it.
class ElidedLabel : public QWidget {
public:
    ElidedLabel(const QFont& font, const QColor& color, QWidget* parent = nullptr);

    // `keptTail` characters at the end are never cut: the ellipsis goes into what comes before them.
    void setText(const QString& text, qsizetype keptTail = 0);
    void setColor(const QColor& color);
    const QString& text() const { return m_text; }
    const QColor& color() const { return m_color; }

    // What fits in the current width.
    QString shownText() const;
    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QString m_text;
    qsizetype m_keptTail = 0;
    QColor m_color;
};

} // namespace tovrin
