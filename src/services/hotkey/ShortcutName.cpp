#include "services/hotkey/ShortcutName.h"

namespace tovrin {

const ShortcutName& ShortcutName::toggleFloatingChip() {
    static const ShortcutName name{"toggleFloatingChip",
                                   Shortcut{'e', ShortcutModifier::control | ShortcutModifier::alt}};
    return name;
}

} // namespace tovrin
