#include "platform/qt/QtMainLoop.h"

#include <QMetaObject>
#include <QPointer>
#include <QTimer>
#include <chrono>
#include <cmath>

namespace tovrin {

QtMainLoop::QtMainLoop() = default;
QtMainLoop::~QtMainLoop() = default;

void QtMainLoop::post(std::function<void()> task) {
    QMetaObject::invokeMethod(&m_context, std::move(task), Qt::QueuedConnection);
}

TimerHandle QtMainLoop::startTimer(Seconds interval, bool singleShot, std::function<void()> fn) {
    auto* timer = new QTimer(&m_context);
    timer->setTimerType(Qt::PreciseTimer);
    timer->setSingleShot(singleShot);
    timer->setInterval(std::chrono::milliseconds(std::llround(std::max(0.0, interval.count()) * 1000)));
    QObject::connect(timer, &QTimer::timeout, timer, std::move(fn));
    timer->start();
    // The loop may be gone before the handle; QPointer tells. A handler may cancel its own timer
    // while it fires, so the timer is stopped now and deleted once control is back in the loop.
    return TimerHandle([guarded = QPointer<QTimer>(timer)] {
        if (!guarded) return;
        guarded->stop();
        guarded->deleteLater();
    });
}

TimerHandle QtMainLoop::repeat(Seconds interval, std::function<void()> fn) {
    return startTimer(interval, false, std::move(fn));
}

TimerHandle QtMainLoop::once(Seconds delay, std::function<void()> fn) {
    return startTimer(delay, true, std::move(fn));
}

} // namespace tovrin
