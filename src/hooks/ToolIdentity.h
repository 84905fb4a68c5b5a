#pragma once

#include "core/Color.h"

#include <string>
#include <string_view>
#include <vector>

namespace tovrin {

// The name, glyph and tint under which a session's `tool` id is shown.
struct ToolIdentity {
    std::string id;
    std::string displayName;
    std::string symbol; // key of a glyph
    Color tint;

    bool operator==(const ToolIdentity&) const = default;

    // The eight known tools, in the order of the per-tool switches.
    static const std::vector<ToolIdentity>& all();
    // Exact, case-sensitive look-up; an unknown id gets a neutral identity named after itself.
    static ToolIdentity named(std::string_view id);
};

} // namespace tovrin
