#pragma once

#include <QCoreApplication>
#include <QEventLoop>

namespace tovrin::test {

// Runs what the views' relays queued, and what that queued in turn, as the event loop would before
// the next input.
inline void settleEvents() {
    for (int i = 0; i < 5; ++i)
        QCoreApplication::processEvents(QEventLoop::AllEvents);
}

} // namespace tovrin::test
