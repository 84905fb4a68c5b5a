#include "services/hotkey/Shortcut.h"

#include "core/Utf8.h"

#include <array>
#include <cstdio>
#include <limits>
#include <nlohmann/json.hpp>
#include <utility>

namespace tovrin {
namespace {

// Latin-1 keysyms equal their code points; the upper-case letters sit 0x20 below the lower-case ones.
bool isUpperLatin(std::uint32_t k) {
    return (k >= 'A' && k <= 'Z') || (k >= 0xc0 && k <= 0xde && k != 0xd7);
}
bool isLowerLatin(std::uint32_t k) {
    return (k >= 'a' && k <= 'z') || (k >= 0xe0 && k <= 0xfe && k != 0xf7);
}

const char* keyName(std::uint32_t keySym) {
    static constexpr std::array<std::pair<std::uint32_t, const char*>, 38> names{{
        {KeySym::space, "Space"},
        {KeySym::backSpace, "Backspace"},
        {KeySym::tab, "Tab"},
        {KeySym::leftTab, "Tab"},
        {0xff0b, "Clear"},
        {0xff0d, "Return"},
        {0xff13, "Pause"},
        {0xff14, "Scroll Lock"},
        {KeySym::escape, "Escape"},
        {0xff50, "Home"},
        {0xff51, "Left"},
        {0xff52, "Up"},
        {0xff53, "Right"},
        {0xff54, "Down"},
        {0xff55, "Page Up"},
        {0xff56, "Page Down"},
        {0xff57, "End"},
        {0xff61, "Print"},
        {0xff63, "Insert"},
        {0xff67, "Menu"},
        {KeySym::deleteKey, "Delete"},
        {0xff8d, "Keypad Enter"},
        {0xff95, "Keypad Home"},
        {0xff96, "Keypad Left"},
        {0xff97, "Keypad Up"},
        {0xff98, "Keypad Right"},
        {0xff99, "Keypad Down"},
        {0xff9a, "Keypad Page Up"},
        {0xff9b, "Keypad Page Down"},
        {0xff9c, "Keypad End"},
        {0xff9d, "Keypad Begin"},
        {0xff9e, "Keypad Insert"},
        {KeySym::keypadDelete, "Keypad Delete"},
        {0xffaa, "Keypad *"},
        {0xffab, "Keypad +"},
        {0xffad, "Keypad -"},
        {0xffae, "Keypad ."},
        {0xffaf, "Keypad /"},
    }};
    for (const auto& [sym, name] : names) {
        if (sym == keySym) return name;
    }
    return nullptr;
}

std::string keyText(std::uint32_t keySym) {
    if (const char* name = keyName(keySym)) return name;
    if (isFunctionKey(keySym)) return "F" + std::to_string(keySym - KeySym::f1 + 1);
    if (keySym >= 0xffb0 && keySym <= 0xffb9) return "Keypad " + std::to_string(keySym - 0xffb0);
    std::string text;
    if (keySym > 0x20 && keySym <= 0xff && keySym != 0x7f && (keySym < 0x80 || keySym >= 0xa0)) {
        Utf8::append(text, isLowerLatin(keySym) ? keySym - 0x20 : keySym);
    } else if (keySym >= 0x01000100 && keySym <= 0x0110ffff) {
        // Keysyms for the rest of Unicode carry the code point in their low bits.
        Utf8::append(text, keySym & 0x00ffffff);
    } else {
        // How X itself names a keysym it has no name for.
        std::array<char, 16> hex{};
        std::snprintf(hex.data(), hex.size(), "0x%04x", keySym);
        text = hex.data();
    }
    return text;
}

} // namespace

Shortcut normalisedShortcut(std::uint32_t keySym, std::uint32_t modifiers) {
    return {isUpperLatin(keySym) ? keySym + 0x20 : keySym, modifiers & ShortcutModifier::all};
}

std::string presentableModifiers(std::uint32_t modifiers) {
    std::string text;
    static constexpr std::array<std::pair<std::uint32_t, const char*>, 4> names{{
        {ShortcutModifier::control, "Ctrl+"},
        {ShortcutModifier::alt, "Alt+"},
        {ShortcutModifier::shift, "Shift+"},
        {ShortcutModifier::super, "Super+"},
    }};
    for (const auto& [bit, name] : names) {
        if (modifiers & bit) text += name;
    }
    return text;
}

std::string presentableDescription(const Shortcut& shortcut) {
    return presentableModifiers(shortcut.modifiers) + keyText(shortcut.keySym);
}

std::string encodeShortcut(const Shortcut& shortcut) {
    return nlohmann::json{{"keySym", shortcut.keySym}, {"modifiers", shortcut.modifiers}}.dump();
}

std::optional<Shortcut> decodeShortcut(const std::string& text) {
    const auto json = nlohmann::json::parse(text, nullptr, false);
    if (!json.is_object()) return std::nullopt;
    const auto member = [&](const char* name) -> std::optional<std::uint32_t> {
        const auto it = json.find(name);
        if (it == json.end() || !it->is_number_unsigned()) return std::nullopt;
        const auto value = it->get<std::uint64_t>();
        if (value > std::numeric_limits<std::uint32_t>::max()) return std::nullopt;
        return static_cast<std::uint32_t>(value);
    };
    const auto keySym = member("keySym");
    const auto modifiers = member("modifiers");
    // A grab with other bits (AnyModifier above all) would take far more than the shortcut.
    if (!keySym || *keySym == 0 || !modifiers || (*modifiers & ~ShortcutModifier::all)) return std::nullopt;
    return Shortcut{*keySym, *modifiers};
}

bool isFunctionKey(std::uint32_t keySym) {
    return keySym >= KeySym::f1 && keySym <= KeySym::f35;
}

std::uint32_t shiftedLetter(std::uint32_t keySym) {
    return isLowerLatin(keySym) ? keySym - 0x20 : keySym;
}

bool isModifierKey(std::uint32_t keySym) {
    return (keySym >= 0xffe1 && keySym <= 0xffee)    // Shift_L .. Hyper_R, Caps_Lock, Shift_Lock
           || (keySym >= 0xfe01 && keySym <= 0xfe13) // ISO level and group shifts and locks
           || keySym == 0xff7e || keySym == 0xff7f;  // Mode_switch, Num_Lock
}

} // namespace tovrin
