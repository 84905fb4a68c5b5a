#include "ui/views/ShortcutKeys.h"

#include "services/hotkey/Shortcut.h"

#include <array>
#include <utility>

namespace tovrin::ShortcutKeys {
namespace {

// Keysyms of Qt's keys beyond Latin-1, for platforms that don't tell the native keysym.
std::uint32_t keySymOfSpecialKey(int key) {
    static constexpr std::array<std::pair<int, std::uint32_t>, 30> keys{{
        {Qt::Key_Escape, KeySym::escape},
        {Qt::Key_Tab, KeySym::tab},
        {Qt::Key_Backtab, KeySym::leftTab},
        {Qt::Key_Backspace, KeySym::backSpace},
        {Qt::Key_Return, 0xff0d},
        {Qt::Key_Enter, 0xff8d},
        {Qt::Key_Insert, 0xff63},
        {Qt::Key_Delete, KeySym::deleteKey},
        {Qt::Key_Pause, 0xff13},
        {Qt::Key_Print, 0xff61},
        {Qt::Key_Home, 0xff50},
        {Qt::Key_End, 0xff57},
        {Qt::Key_Left, 0xff51},
        {Qt::Key_Up, 0xff52},
        {Qt::Key_Right, 0xff53},
        {Qt::Key_Down, 0xff54},
        {Qt::Key_PageUp, 0xff55},
        {Qt::Key_PageDown, 0xff56},
        {Qt::Key_Shift, 0xffe1},
        {Qt::Key_Control, 0xffe3},
        {Qt::Key_Meta, 0xffeb},
        {Qt::Key_Alt, 0xffe9},
        {Qt::Key_AltGr, 0xfe03},
        {Qt::Key_CapsLock, 0xffe5},
        {Qt::Key_NumLock, 0xff7f},
        {Qt::Key_ScrollLock, 0xff14},
        {Qt::Key_Super_L, 0xffeb},
        {Qt::Key_Super_R, 0xffec},
        {Qt::Key_Menu, 0xff67},
        {Qt::Key_Clear, 0xff0b},
    }};
    for (const auto& [qtKey, keySym] : keys) {
        if (qtKey == key) return keySym;
    }
    return 0;
}

} // namespace

std::uint32_t modifierMask(Qt::KeyboardModifiers modifiers) {
    std::uint32_t mask = 0;
    if (modifiers & Qt::ShiftModifier) mask |= ShortcutModifier::shift;
    if (modifiers & Qt::ControlModifier) mask |= ShortcutModifier::control;
    if (modifiers & Qt::AltModifier) mask |= ShortcutModifier::alt;
    if (modifiers & Qt::MetaModifier) mask |= ShortcutModifier::super;
    return mask;
}

Press pressOf(const QKeyEvent& event) {
    const int key = event.key();
    std::uint32_t keySym = 0;
    // Ctrl+Alt with a function key gives a console-switching keysym on X; the key is what counts.
    if (key >= Qt::Key_F1 && key <= Qt::Key_F35)
        keySym = KeySym::f1 + static_cast<std::uint32_t>(key - Qt::Key_F1);
    else if (event.nativeVirtualKey() != 0)
        keySym = event.nativeVirtualKey();
    else if (key >= Qt::Key_Space && key <= 0xff)
        keySym = static_cast<std::uint32_t>(key);
    else
        keySym = keySymOfSpecialKey(key);
    return {normalisedShortcut(keySym, 0).keySym, modifierMask(event.modifiers())};
}

} // namespace tovrin::ShortcutKeys
