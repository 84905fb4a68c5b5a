#include "ui/theme/BurningWidget.h"

#include "ui/theme/FlickerSchedule.h"
#include "ui/theme/MotionSettings.h"

namespace tovrin {

BurningWidget::BurningWidget(QWidget* parent) : QWidget(parent) {
    setAttribute(Qt::WA_TranslucentBackground);
}

BurningWidget::~BurningWidget() {
    FlickerSchedule::shared().leave(this);
}

FireTextMode BurningWidget::mode() const {
    return fireTextMode(m_flame.has_value(), reduceMotion());
}

void BurningWidget::setFlame(std::optional<FlamePalette> flame) {
    m_flame = flame;
    followSchedule();
    update();
}

void BurningWidget::followSchedule() {
    if (isVisible() && needsFlickerSchedule(mode()))
        FlickerSchedule::shared().join(this);
    else
        FlickerSchedule::shared().leave(this);
}

void BurningWidget::showEvent(QShowEvent*) {
    followSchedule();
}

void BurningWidget::hideEvent(QHideEvent*) {
    FlickerSchedule::shared().leave(this);
}

} // namespace tovrin
