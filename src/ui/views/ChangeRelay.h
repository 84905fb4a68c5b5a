#pragma once

#include "core/Signal.h"

#include <QObject>
#include <functional>

namespace tovrin {

// Turns a model's will-change signal into one call after the change: the signal fires before the
// new values are stored, so the call is queued on the Qt event loop, and a burst of signals before
// it runs yields a single call.
class ChangeRelay : public QObject {
public:
    ChangeRelay(Signal<>& willChange, std::function<void()> onChanged, QObject* parent);

private:
    void schedule();

    std::function<void()> m_onChanged;
    bool m_pending = false;
    Subscription m_subscription;
};

} // namespace tovrin
