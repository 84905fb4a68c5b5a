#pragma once

#include "ui/theme/BurningWidget.h"

#include <QFont>
#include <QPainterPath>
#include <QString>

namespace tovrin {

// A line of engraved text: flat bronze when there is no flame, else filled with the flame and
// glowing, burning (redrawn about 24 times a second) unless the desktop reduces motion.
// The widget reserves glowMargin on every side for the glow; layouts can tighten by that much.
class FireText : public BurningWidget {
public:
    static constexpr int glowMargin = 6;

    FireText(const QString& text, const QFont& font, double tracking, QWidget* parent = nullptr);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override { return sizeHint(); }

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QPainterPath m_glyphs;
    QRectF m_lineBox;
};

} // namespace tovrin
