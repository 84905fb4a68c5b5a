#pragma once

#include "core/MainLoop.h"

#include <QObject>

namespace tovrin {

// The main loop on Qt's event loop of the thread that built it (the GUI thread).
class QtMainLoop final : public MainLoop {
public:
    QtMainLoop();
    ~QtMainLoop() override;

    void post(std::function<void()> task) override;
    TimerHandle repeat(Seconds interval, std::function<void()> fn) override;
    TimerHandle once(Seconds delay, std::function<void()> fn) override;

private:
    TimerHandle startTimer(Seconds interval, bool singleShot, std::function<void()> fn);

    QObject m_context; // posted tasks run in its thread and die with it
};

} // namespace tovrin
