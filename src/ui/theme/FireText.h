#pragma once

#include "ui/viewmodels/FlameCurves.h"

#include <QFont>
#include <QPainterPath>
#include <QString>
#include <QWidget>
#include <optional>

namespace tovrin {

// A line of engraved text: flat bronze when there is no flame, else filled with the flame and
// glowing, burning (redrawn about 24 times a second) unless the desktop reduces motion.
// The widget reserves glowMargin on every side for the glow; layouts can tighten by that much.
class FireText : public QWidget {
public:
    static constexpr int glowMargin = 6;

    FireText(const QString& text, const QFont& font, double tracking, QWidget* parent = nullptr);
    ~FireText() override;

    void setFlame(std::optional<FlamePalette> flame);
    const std::optional<FlamePalette>& flame() const { return m_flame; }
    FireTextMode mode() const;

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override { return sizeHint(); }

protected:
    void paintEvent(QPaintEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;

private:
    void followSchedule();

    QPainterPath m_glyphs;
    QRectF m_lineBox;
    std::optional<FlamePalette> m_flame;
};

} // namespace tovrin
