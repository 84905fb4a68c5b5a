#pragma once

#include <QAbstractButton>
#include <QVariantAnimation>

namespace tovrin {

// A themed on/off switch: the label, a flexible space and a capsule track whose thumb springs from
// one end to the other. The whole row is the hit area; a disabled toggle is drawn faded.
class ForgeToggle : public QAbstractButton {
public:
    static constexpr int trackWidth = 38;
    static constexpr int trackHeight = 22;
    static constexpr int thumbSide = 18;
    static constexpr int spacing = 8;

    explicit ForgeToggle(const QString& label = {}, QWidget* parent = nullptr);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;
    // Where the thumb stands, 0 at the off end and 1 at the on end; between the two while it moves.
    double thumbPosition() const { return m_thumbPosition; }

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    void moveThumb(bool on);
    QRectF trackRect() const;

    QVariantAnimation m_motion;
    double m_thumbPosition = 0;
};

} // namespace tovrin
