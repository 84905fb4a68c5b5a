#pragma once

#include <QApplication>
#include <QEnterEvent>
#include <QMouseEvent>
#include <QWidget>

namespace tovrin::test {

// Left-button input as the application delivers it: the press goes to the widget under the pointer
// and travels up to whoever takes it; moves and the release go to that widget.

inline void sendMouse(QWidget* target, QEvent::Type type, QPoint local, Qt::MouseButtons held) {
    QMouseEvent event(type, QPointF(local), QPointF(target->mapToGlobal(local)), Qt::LeftButton, held,
                      Qt::NoModifier);
    QApplication::sendEvent(target, &event);
}

inline void press(QWidget* target, QPoint local) {
    sendMouse(target, QEvent::MouseButtonPress, local, Qt::LeftButton);
}

inline void release(QWidget* target, QPoint local) {
    sendMouse(target, QEvent::MouseButtonRelease, local, Qt::NoButton);
}

// Pressed on `under`, whose parent `taker` took the press and so receives the release.
inline void click(QWidget* under, QWidget* taker, QPoint local) {
    press(under, local);
    release(taker, under->mapTo(taker, local));
}

inline void click(QWidget* target, QPoint local) {
    click(target, target, local);
}

// Presses at `from` in `taker`, moves by `by` in steps, releases. Positions are re-mapped after each
// step, since the window moves under the pointer.
inline void drag(QWidget* taker, QPoint from, QPoint by) {
    const QPoint globalStart = taker->mapToGlobal(from);
    press(taker, from);
    for (int step = 1; step <= 4; ++step) {
        const QPoint global = globalStart + by * step / 4;
        QMouseEvent move(QEvent::MouseMove, QPointF(taker->mapFromGlobal(global)), QPointF(global),
                         Qt::NoButton, Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(taker, &move);
    }
    release(taker, taker->mapFromGlobal(globalStart + by));
}

// The pointer entering at the widget's middle, and leaving it.
inline void hover(QWidget* target) {
    const QPointF local(target->width() / 2.0, target->height() / 2.0);
    QEnterEvent enter(local, local, QPointF(target->mapToGlobal(local.toPoint())));
    QApplication::sendEvent(target, &enter);
}

inline void unhover(QWidget* target) {
    QEvent leave(QEvent::Leave);
    QApplication::sendEvent(target, &leave);
}

} // namespace tovrin::test
