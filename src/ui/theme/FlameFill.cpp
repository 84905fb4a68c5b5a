#include "ui/theme/FlameFill.h"

#include "ui/theme/FlamePainting.h"
#include "ui/theme/FlickerSchedule.h"
#include "ui/theme/ForgeTheme.h"
#include "ui/theme/MotionSettings.h"

#include <QPainter>

namespace tovrin {

FlameFill::FlameFill(QWidget* parent) : QWidget(parent) {
    setAttribute(Qt::WA_TranslucentBackground);
}

FlameFill::~FlameFill() {
    FlickerSchedule::shared().leave(this);
}

FireTextMode FlameFill::mode() const {
    return fireTextMode(m_flame.has_value(), reduceMotion());
}

void FlameFill::setFlame(std::optional<FlamePalette> flame) {
    m_flame = flame;
    followSchedule();
    update();
}

void FlameFill::followSchedule() {
    if (isVisible() && needsFlickerSchedule(mode()))
        FlickerSchedule::shared().join(this);
    else
        FlickerSchedule::shared().leave(this);
}

void FlameFill::showEvent(QShowEvent*) {
    followSchedule();
}

void FlameFill::hideEvent(QHideEvent*) {
    FlickerSchedule::shared().leave(this);
}

void FlameFill::paintEvent(QPaintEvent*) {
    const FireTextMode current = mode();
    if (current == FireTextMode::flat) return;
    const FlameCurves::FlameFillFrame frame =
        current == FireTextMode::still ? FlameCurves::flameFillStillFrame(*m_flame)
                                       : FlameCurves::flameFillFrame(*m_flame, FlamePainting::now());
    QPainter painter(this);
    painter.fillRect(rect(), FlamePainting::gradient(frame.fill, frame.brightness, QRectF(rect())));
    painter.fillRect(rect(), ForgeStyle::qColor(frame.overlay, frame.overlayOpacity));
}

} // namespace tovrin
