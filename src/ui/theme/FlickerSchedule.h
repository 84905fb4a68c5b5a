#pragma once

#include <QObject>
#include <QTimer>
#include <set>

class QWidget;

namespace tovrin {

// The one redraw clock of every burning widget, about 24 frames a second. It runs only while at least
// one burning widget is on screen, so hidden windows cost nothing.
class FlickerSchedule : public QObject {
public:
    static FlickerSchedule& shared();

    // A widget joins when it starts burning on screen and leaves when it is hidden, cools or dies.
    void join(QWidget* widget);
    void leave(QWidget* widget);

    bool isRunning() const { return m_timer.isActive(); }
    int interval() const { return m_timer.interval(); }

private:
    FlickerSchedule();
    void tick();

    QTimer m_timer;
    std::set<QWidget*> m_burning;
};

} // namespace tovrin
