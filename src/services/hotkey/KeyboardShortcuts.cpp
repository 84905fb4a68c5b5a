#include "services/hotkey/KeyboardShortcuts.h"

#include <iostream>
#include <utility>

namespace tovrin {
namespace {

void printLine(const std::string& line) {
    std::cout << line << std::endl;
}

const char* reason(ShortcutRegistration registration) {
    return registration == ShortcutRegistration::heldByAnotherProgram ? "held by another program"
                                                                      : "no display or no such key";
}

} // namespace

KeyboardShortcuts::KeyboardShortcuts(DefaultsStore& defaults, GlobalShortcuts& system, LogLine log)
    : m_defaults(defaults), m_system(system), m_log(log ? std::move(log) : LogLine(printLine)) {
    m_system.setPressedHandler([this](const Shortcut& pressed) { keyDown(pressed); });
}

KeyboardShortcuts::~KeyboardShortcuts() {
    m_system.setPressedHandler({});
    for (const auto& [shortcut, registration] : m_registeredShortcuts) {
        if (registration == ShortcutRegistration::registered) m_system.unregisterShortcut(shortcut);
    }
}

void KeyboardShortcuts::create(const ShortcutName& name) {
    if (!m_createdNames.insert(name.rawValue).second) return;
    if (name.defaultShortcut && !m_defaults.object(name.key())) persist(*name.defaultShortcut, name);
}

std::optional<Shortcut> KeyboardShortcuts::storedShortcut(const ShortcutName& name) const {
    const auto value = m_defaults.object(name.key());
    if (!value || !value->is_string()) return std::nullopt;
    return decodeShortcut(value->get<std::string>());
}

std::optional<Shortcut> KeyboardShortcuts::getShortcut(const ShortcutName& name) {
    create(name);
    return storedShortcut(name);
}

void KeyboardShortcuts::setShortcut(const std::optional<Shortcut>& shortcut, const ShortcutName& name) {
    create(name);
    if (shortcut) {
        persist(*shortcut, name);
        return;
    }
    const auto old = storedShortcut(name);
    if (!old) return;
    if (name.defaultShortcut)
        m_defaults.set(name.key(), false);
    else
        m_defaults.remove(name.key());
    unregisterShortcut(*old);
    shortcutByNameDidChange.emit(name.rawValue);
}

void KeyboardShortcuts::persist(const Shortcut& shortcut, const ShortcutName& name) {
    if (const auto old = storedShortcut(name)) unregisterShortcut(*old);
    if (!m_registeredShortcuts.contains(shortcut)) registerShortcut(shortcut);
    m_defaults.set(name.key(), encodeShortcut(shortcut));
    shortcutByNameDidChange.emit(name.rawValue);
}

void KeyboardShortcuts::registerShortcut(const Shortcut& shortcut) {
    const ShortcutRegistration registration = m_system.registerShortcut(shortcut);
    m_registeredShortcuts[shortcut] = registration;
    if (registration != ShortcutRegistration::registered)
        m_log("Error registering hotkey " + presentableDescription(shortcut) + ": " + reason(registration));
}

void KeyboardShortcuts::unregisterShortcut(const Shortcut& shortcut) {
    const auto it = m_registeredShortcuts.find(shortcut);
    if (it == m_registeredShortcuts.end()) return;
    if (it->second == ShortcutRegistration::registered) m_system.unregisterShortcut(shortcut);
    m_registeredShortcuts.erase(it);
}

Subscription KeyboardShortcuts::onKeyDown(const ShortcutName& name, std::function<void()> action) {
    create(name);
    auto& entry = m_keyDownHandlers[name.rawValue];
    if (!entry.second) entry = {name, std::make_unique<Signal<>>()};
    Subscription subscription = entry.second->connect(std::move(action));
    if (const auto shortcut = storedShortcut(name); shortcut && !m_registeredShortcuts.contains(*shortcut))
        registerShortcut(*shortcut);
    return subscription;
}

bool KeyboardShortcuts::isRegistered(const Shortcut& shortcut) const {
    const auto it = m_registeredShortcuts.find(shortcut);
    return it != m_registeredShortcuts.end() && it->second == ShortcutRegistration::registered;
}

bool KeyboardShortcuts::keyDown(const Shortcut& pressed) {
    if (!isRegistered(pressed)) return false;
    if (m_paused) return true;
    for (const auto& [rawValue, entry] : m_keyDownHandlers) {
        if (storedShortcut(entry.first) == pressed) entry.second->emit();
    }
    return true;
}

ShortcutRegistration KeyboardShortcuts::probe(const Shortcut& candidate) {
    if (isRegistered(candidate)) return ShortcutRegistration::registered;
    const ShortcutRegistration registration = m_system.registerShortcut(candidate);
    if (registration == ShortcutRegistration::registered) m_system.unregisterShortcut(candidate);
    return registration;
}

void KeyboardShortcuts::setPaused(bool paused) {
    if (m_paused == paused) return;
    m_paused = paused;
    recorderActiveStatusDidChange.emit(paused);
}

} // namespace tovrin
