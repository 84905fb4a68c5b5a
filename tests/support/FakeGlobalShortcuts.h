#pragma once

#include "services/hotkey/GlobalShortcuts.h"

#include <set>

namespace tovrin::test {

// A desktop that takes every shortcut but those another program holds, and presses them on request.
class FakeGlobalShortcuts final : public GlobalShortcuts {
public:
    std::set<Shortcut> heldElsewhere;
    std::set<Shortcut> registered;

    ShortcutRegistration registerShortcut(const Shortcut& shortcut) override {
        if (heldElsewhere.contains(shortcut)) return ShortcutRegistration::heldByAnotherProgram;
        registered.insert(shortcut);
        return ShortcutRegistration::registered;
    }
    void unregisterShortcut(const Shortcut& shortcut) override { registered.erase(shortcut); }
    void setPressedHandler(PressedHandler handler) override { m_pressed = std::move(handler); }
    bool available() override { return true; }

    // Only what is registered reaches the application.
    void press(const Shortcut& shortcut) const {
        if (registered.contains(shortcut) && m_pressed) m_pressed(shortcut);
    }

private:
    PressedHandler m_pressed;
};

} // namespace tovrin::test
