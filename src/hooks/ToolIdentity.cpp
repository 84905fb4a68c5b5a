#include "hooks/ToolIdentity.h"

namespace tovrin {

const std::vector<ToolIdentity>& ToolIdentity::all() {
    static const std::vector<ToolIdentity> tools{
        {"claude-code", "Claude Code", "terminal.fill", {0.85, 0.46, 0.34}},
        {"codex-cli", "Codex", "circle.hexagongrid.fill", {0.10, 0.62, 0.45}},
        {"cursor-cli", "Cursor (CLI)", "terminal.fill", {0.31, 0.33, 0.86}},
        {"cursor-ide", "Cursor", "cursorarrow.rays", {0.31, 0.33, 0.86}},
        {"copilot-cli", "Copilot (CLI)", "terminal.fill", {0.15, 0.65, 0.59}},
        {"copilot-vscode",
         "Copilot (VS Code)",
         "chevron.left.forwardslash.chevron.right",
         {0.00, 0.48, 0.80}},
        {"antigravity-cli", "Antigravity (CLI)", "terminal.fill", {0.55, 0.36, 0.86}},
        {"antigravity-ide", "Antigravity", "sparkles", {0.55, 0.36, 0.86}},
    };
    return tools;
}

ToolIdentity ToolIdentity::named(std::string_view id) {
    for (const auto& tool : all()) {
        if (tool.id == id) return tool;
    }
    // The platform's plain gray.
    return {std::string(id), std::string(id), "questionmark.circle.fill", {0.557, 0.557, 0.576}};
}

} // namespace tovrin
