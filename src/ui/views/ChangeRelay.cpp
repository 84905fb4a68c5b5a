#include "ui/views/ChangeRelay.h"

#include <QMetaObject>
#include <utility>

namespace tovrin {

ChangeRelay::ChangeRelay(Signal<>& willChange, std::function<void()> onChanged, QObject* parent)
    : QObject(parent), m_onChanged(std::move(onChanged)),
      m_subscription(willChange.connect([this] { schedule(); })) {}

void ChangeRelay::schedule() {
    if (m_pending) return;
    m_pending = true;
    // The context object drops the call if the relay is gone by then.
    QMetaObject::invokeMethod(
        this,
        [this] {
            m_pending = false;
            m_onChanged();
        },
        Qt::QueuedConnection);
}

} // namespace tovrin
