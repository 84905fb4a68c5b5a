#pragma once

#include <compare>
#include <cstdint>
#include <optional>
#include <string>

namespace tovrin {

// X11 modifier mask bits, as key events and passive grabs carry them.
namespace ShortcutModifier {
inline constexpr std::uint32_t shift = 1;   // ShiftMask
inline constexpr std::uint32_t control = 4; // ControlMask
inline constexpr std::uint32_t alt = 8;     // Mod1Mask
inline constexpr std::uint32_t super = 64;  // Mod4Mask
// The only bits a shortcut keeps: lock keys and other modifiers never take part.
inline constexpr std::uint32_t all = shift | control | alt | super;
} // namespace ShortcutModifier

// A key and the modifiers held with it. Letters are kept as their lower-case keysym, so that the
// key is the same whether or not Shift is part of the shortcut.
struct Shortcut {
    std::uint32_t keySym = 0;
    std::uint32_t modifiers = 0;

    auto operator<=>(const Shortcut&) const = default;
};

// A shortcut as the keyboard reports it, brought to the stored form: letters lower-case, lock and
// unknown modifier bits dropped.
Shortcut normalisedShortcut(std::uint32_t keySym, std::uint32_t modifiers);

// "Ctrl+Alt+E": modifiers in the order Ctrl, Alt, Shift, Super, then the key.
std::string presentableDescription(const Shortcut& shortcut);
// The modifiers alone, as they lead a description: "Ctrl+Alt+".
std::string presentableModifiers(std::uint32_t modifiers);

// The stored text, a JSON object {"keySym":101,"modifiers":12}.
std::string encodeShortcut(const Shortcut& shortcut);
// None for anything that is not such an object with a key and only the four modifier bits.
std::optional<Shortcut> decodeShortcut(const std::string& text);

// Keysyms the recorder treats apart.
namespace KeySym {
inline constexpr std::uint32_t space = 0x20;
inline constexpr std::uint32_t backSpace = 0xff08;
inline constexpr std::uint32_t tab = 0xff09;
// What Shift+Tab gives.
inline constexpr std::uint32_t leftTab = 0xfe20;
inline constexpr std::uint32_t escape = 0xff1b;
inline constexpr std::uint32_t deleteKey = 0xffff;
inline constexpr std::uint32_t keypadDelete = 0xff9f;
inline constexpr std::uint32_t f1 = 0xffbe;
inline constexpr std::uint32_t f35 = 0xffe0;
} // namespace KeySym

bool isFunctionKey(std::uint32_t keySym);
// The keysym a letter key gives with Shift; any other keysym as it is.
std::uint32_t shiftedLetter(std::uint32_t keySym);
// Shift, Control, Alt, Super, the lock keys and the like, pressed on their own.
bool isModifierKey(std::uint32_t keySym);

} // namespace tovrin
