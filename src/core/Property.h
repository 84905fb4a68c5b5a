#pragma once

#include "core/Signal.h"

#include <functional>
#include <utility>

namespace tovrin {

// An observable value of an observable object. A write fires the owner's will-change signal,
// then hands the new value to observers, then stores it, then runs the optional after-store
// action (persistence). Observers therefore still read the old value through get().
template <class T> class Property {
public:
    using AfterStore = std::function<void(const T&)>;

    Property(Signal<>& ownerWillChange, T initial, AfterStore afterStore = {})
        : m_ownerWillChange(ownerWillChange), m_value(std::move(initial)),
          m_afterStore(std::move(afterStore)) {}
    Property(const Property&) = delete;
    Property& operator=(const Property&) = delete;

    const T& get() const { return m_value; }
    const T& operator()() const { return m_value; }

    // Every assignment notifies, also when the value stays the same.
    void set(T value) {
        m_ownerWillChange.emit();
        m_changes.emit(value);
        m_value = std::move(value);
        if (m_afterStore) m_afterStore(m_value);
    }

    // Delivers the current value at once, then each new value just before it is stored.
    Subscription observe(std::function<void(const T&)> handler) {
        handler(m_value);
        return m_changes.connect(std::move(handler));
    }

private:
    Signal<>& m_ownerWillChange;
    T m_value;
    AfterStore m_afterStore;
    Signal<T> m_changes;
};

} // namespace tovrin
