#pragma once

#include "core/Color.h"

namespace tovrin {

// The one dark look of every window: iron, bronze and ember. All colours are opaque sRGB.
namespace ForgeTheme {

inline constexpr Color ironTop{0.129, 0.113, 0.149, 1};
inline constexpr Color ironBottom{0.067, 0.055, 0.082, 1};
inline constexpr Color edge{0.227, 0.2, 0.251, 1};
inline constexpr Color bronze{0.788, 0.635, 0.294, 1};
inline constexpr Color bronzeDim{0.541, 0.478, 0.322, 1};
inline constexpr Color ash{0.663, 0.639, 0.608, 1};
inline constexpr Color ashDim{0.435, 0.416, 0.392, 1};
inline constexpr Color ember{1.0, 0.478, 0.094, 1};
inline constexpr Color waitingRed{0.898, 0.282, 0.302, 1};
// Working is the ember itself, so the amber state and the accent never drift apart.
inline constexpr Color workingAmber = ember;

// The title font is looked up by this name; without it a serif system font stands in.
inline constexpr const char* engravedFontFamily = "Cinzel";

} // namespace ForgeTheme

// The four colours of one flame, from its bright heart to its halo.
struct FlamePalette {
    Color core;
    Color mid;
    Color base;
    Color glow;

    bool operator==(const FlamePalette&) const = default;

    static constexpr FlamePalette amber() {
        return {{1.0, 0.88, 0.52, 1}, ForgeTheme::ember, {0.78, 0.3, 0.05, 1}, ForgeTheme::ember};
    }
    static constexpr FlamePalette red() {
        return {{0.9, 0.38, 0.24, 1}, {0.66, 0.11, 0.12, 1}, {0.32, 0.03, 0.05, 1}, {0.72, 0.13, 0.15, 1}};
    }
};

// The horizontal hairline under headings: bronze fading out to both ends.
struct HairlineColors {
    static constexpr Color ends{ForgeTheme::bronze.red, ForgeTheme::bronze.green, ForgeTheme::bronze.blue, 0};
    static constexpr Color middle{ForgeTheme::bronze.red, ForgeTheme::bronze.green, ForgeTheme::bronze.blue,
                                  0.26};
};

} // namespace tovrin
