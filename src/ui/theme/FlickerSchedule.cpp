#include "ui/theme/FlickerSchedule.h"

#include "ui/viewmodels/FlameCurves.h"

#include <QCoreApplication>
#include <QWidget>
#include <cmath>

namespace tovrin {

FlickerSchedule& FlickerSchedule::shared() {
    static FlickerSchedule schedule;
    return schedule;
}

FlickerSchedule::FlickerSchedule() {
    m_timer.setTimerType(Qt::PreciseTimer);
    m_timer.setInterval(static_cast<int>(std::ceil(FlameCurves::frameInterval * 1000)));
    connect(&m_timer, &QTimer::timeout, this, [this] { tick(); });
    // The schedule outlives the application object; its timer must not.
    if (QCoreApplication* application = QCoreApplication::instance())
        connect(application, &QCoreApplication::aboutToQuit, this, [this] { m_timer.stop(); });
}

void FlickerSchedule::join(QWidget* widget) {
    m_burning.insert(widget);
    if (!m_timer.isActive()) m_timer.start();
}

void FlickerSchedule::leave(QWidget* widget) {
    m_burning.erase(widget);
    if (m_burning.empty()) m_timer.stop();
}

void FlickerSchedule::tick() {
    for (QWidget* widget : m_burning)
        widget->update();
}

} // namespace tovrin
