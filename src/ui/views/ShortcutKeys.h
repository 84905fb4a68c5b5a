#pragma once

#include <QKeyEvent>
#include <cstdint>

namespace tovrin::ShortcutKeys {

// A key event as global shortcuts know keys: the keysym the key gives (0 when it is unknown) and the
// X modifier mask of Shift, Ctrl, Alt and Super.
struct Press {
    std::uint32_t keySym = 0;
    std::uint32_t modifiers = 0;
};

Press pressOf(const QKeyEvent& event);
std::uint32_t modifierMask(Qt::KeyboardModifiers modifiers);

} // namespace tovrin::ShortcutKeys
