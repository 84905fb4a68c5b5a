#pragma once

#include "services/hotkey/Shortcut.h"

#include <optional>
#include <string>

namespace tovrin {

// A shortcut the application offers, under the name its settings are stored by.
struct ShortcutName {
    std::string rawValue;
    std::optional<Shortcut> defaultShortcut;

    // The settings key of its shortcut.
    std::string key() const { return "KeyboardShortcuts_" + rawValue; }

    // Shows or hides the floating chip; Ctrl+Alt+E unless the user chose otherwise.
    static const ShortcutName& toggleFloatingChip();
};

} // namespace tovrin
