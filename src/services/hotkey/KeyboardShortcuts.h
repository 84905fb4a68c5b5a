#pragma once

#include "core/DefaultsStore.h"
#include "core/Signal.h"
#include "services/hotkey/GlobalShortcuts.h"
#include "services/hotkey/ShortcutName.h"

#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <set>
#include <string>

namespace tovrin {

// The application's named global shortcuts: what each is, kept in the defaults store; which are
// registered with the desktop; and who is called when one is pressed. Main loop only.
//
// A name's stored value is the shortcut as JSON text, `false` once the user cleared a shortcut that
// has a default (so the default never comes back), or nothing until the default is first applied.
class KeyboardShortcuts {
public:
    using LogLine = std::function<void(const std::string& line)>;

    // Registration failures are told to `log`, by default one line on standard output.
    KeyboardShortcuts(DefaultsStore& defaults, GlobalShortcuts& system, LogLine log = {});
    ~KeyboardShortcuts();
    KeyboardShortcuts(const KeyboardShortcuts&) = delete;
    KeyboardShortcuts& operator=(const KeyboardShortcuts&) = delete;

    std::optional<Shortcut> getShortcut(const ShortcutName& name);
    // None clears the name's shortcut.
    void setShortcut(const std::optional<Shortcut>& shortcut, const ShortcutName& name);

    // Calls `action` on each press of the name's shortcut, until the subscription ends.
    Subscription onKeyDown(const ShortcutName& name, std::function<void()> action);

    // A press the application saw itself, because its own popup held the keyboard: handled as the
    // desktop's report of it would be. Answers whether it was a registered shortcut.
    bool keyDown(const Shortcut& pressed);
    // Whether the desktop took `shortcut`, so that its presses can come.
    bool isRegistered(const Shortcut& shortcut) const;

    // Whether the desktop would register `candidate` now, without keeping it.
    ShortcutRegistration probe(const Shortcut& candidate);

    // While a recorder has the keyboard no shortcut fires, so that typing one there doesn't act.
    void setPaused(bool paused);
    bool isPaused() const { return m_paused; }

    // Whether there is a display that can take global shortcuts at all.
    bool available() const { return m_system.available(); }
    bool throughPortal() const { return m_system.throughPortal(); }

    // The raw value of a name whose shortcut changed.
    Signal<std::string> shortcutByNameDidChange;
    // True when a recorder starts recording, false when it stops.
    Signal<bool> recorderActiveStatusDidChange;

private:
    void create(const ShortcutName& name);
    void persist(const Shortcut& shortcut, const ShortcutName& name);
    void registerShortcut(const Shortcut& shortcut);
    void unregisterShortcut(const Shortcut& shortcut);
    std::optional<Shortcut> storedShortcut(const ShortcutName& name) const;

    DefaultsStore& m_defaults;
    GlobalShortcuts& m_system;
    LogLine m_log;
    std::set<std::string> m_createdNames;
    // Every shortcut handed to the desktop, with its answer: one it refused isn't asked again.
    std::map<Shortcut, ShortcutRegistration> m_registeredShortcuts;
    // By raw value, with the name that tells where its shortcut is stored.
    std::map<std::string, std::pair<ShortcutName, std::unique_ptr<Signal<>>>> m_keyDownHandlers;
    bool m_paused = false;
};

} // namespace tovrin
