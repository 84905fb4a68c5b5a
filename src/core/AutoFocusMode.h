#pragma once

#include <array>
#include <optional>
#include <string_view>

namespace tovrin {

// When a waiting session's window is brought forward by itself.
enum class AutoFocusMode { off, single, latest };

inline constexpr std::array<AutoFocusMode, 3> allAutoFocusModes{AutoFocusMode::off, AutoFocusMode::single,
                                                                AutoFocusMode::latest};

constexpr std::string_view rawValue(AutoFocusMode mode) {
    switch (mode) {
    case AutoFocusMode::single:
        return "single";
    case AutoFocusMode::latest:
        return "latest";
    case AutoFocusMode::off:
        break;
    }
    return "off";
}

constexpr std::string_view label(AutoFocusMode mode) {
    switch (mode) {
    case AutoFocusMode::single:
        return "Only when one is waiting";
    case AutoFocusMode::latest:
        return "Always (newest)";
    case AutoFocusMode::off:
        break;
    }
    return "Off";
}

constexpr std::optional<AutoFocusMode> autoFocusModeFromRaw(std::string_view raw) {
    for (const auto mode : allAutoFocusModes) {
        if (rawValue(mode) == raw) return mode;
    }
    return std::nullopt;
}

} // namespace tovrin
