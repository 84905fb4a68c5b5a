#pragma once

#include <array>
#include <string_view>

namespace tovrin {

// The rows of the settings window's sidebar, in their order.
enum class SettingsCategory { general, alerts, connectors, window, tools };

inline constexpr std::array<SettingsCategory, 5> allSettingsCategories{
    SettingsCategory::general, SettingsCategory::alerts, SettingsCategory::connectors,
    SettingsCategory::window, SettingsCategory::tools};

constexpr std::string_view rawValue(SettingsCategory category) {
    switch (category) {
    case SettingsCategory::alerts:
        return "alerts";
    case SettingsCategory::connectors:
        return "connectors";
    case SettingsCategory::window:
        return "window";
    case SettingsCategory::tools:
        return "tools";
    case SettingsCategory::general:
        break;
    }
    return "general";
}

constexpr std::string_view title(SettingsCategory category) {
    switch (category) {
    case SettingsCategory::alerts:
        return "Alerts";
    case SettingsCategory::connectors:
        return "Connectors";
    case SettingsCategory::window:
        return "Window";
    case SettingsCategory::tools:
        return "Tools";
    case SettingsCategory::general:
        break;
    }
    return "General";
}

// The key of the sidebar glyph.
constexpr std::string_view symbol(SettingsCategory category) {
    switch (category) {
    case SettingsCategory::alerts:
        return "bell";
    case SettingsCategory::connectors:
        return "antenna.radiowaves.left.and.right";
    case SettingsCategory::window:
        return "macwindow";
    case SettingsCategory::tools:
        return "wrench.and.screwdriver";
    case SettingsCategory::general:
        break;
    }
    return "gearshape";
}

} // namespace tovrin
