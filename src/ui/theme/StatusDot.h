#pragma once

#include <QColor>
#include <QWidget>

namespace tovrin {

// A 9-point dot in a state's colour, optionally glowing. The widget is larger than the dot by the
// glow's reach on every side (glowMargin), so that the glow isn't cut off.
class StatusDot : public QWidget {
public:
    static constexpr int diameter = 9;
    static constexpr int glowMargin = 4;

    StatusDot(const QColor& color, bool glows, QWidget* parent = nullptr);

    void setColor(const QColor& color);
    void setGlows(bool glows);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QColor m_color;
    bool m_glows;
};

} // namespace tovrin
