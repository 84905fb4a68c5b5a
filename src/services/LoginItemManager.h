#pragma once

#include "core/Property.h"
#include "core/Signal.h"
#include "services/LoginItems.h"

namespace tovrin {

// Mirrors whether the application starts at login, for the settings toggle: it always shows the
// system's answer, never the user's wish, so a registration that fails snaps the toggle back.
class LoginItemManager {
public:
    explicit LoginItemManager(LoginItems& items);

    Signal<> willChange;
    Property<bool> isEnabled;

    // The settings toggle's write path: asks, then reads the answer back.
    void setEnabled(bool enabled);
    // Reads the state again, for a change made outside the application.
    void refresh();

private:
    LoginItems& m_items;
};

} // namespace tovrin
