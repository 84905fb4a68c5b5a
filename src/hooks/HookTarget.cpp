#include "hooks/HookTarget.h"

namespace tovrin {

std::vector<HookTarget> HookTarget::all(const std::filesystem::path& home) {
    return {
        {"claude-code", "Claude Code", "claude-code", home / ".claude/settings.json",
         MergeStrategy::twoLevel(), true,
         "Also covers Cursor's in-editor agent, which runs your Claude Code hooks.", home / ".claude"},
        {"codex", "Codex CLI", "codex", home / ".codex/hooks.json", MergeStrategy::twoLevel(), true,
         "Codex gates hooks behind a trust prompt: run /hooks in a Codex session and trust \"tovrin\".",
         home / ".codex"},
        {"copilot-cli", "Copilot CLI", "copilot-cli", home / ".copilot/hooks/tovrin.json",
         MergeStrategy::dedicatedFile(), true, std::nullopt, home / ".copilot"},
        // VS Code reads this file from our own folder; its settings are told where it is.
        {"vscode", "Copilot in VS Code", "vscode", home / ".tovrin/vscode-hooks.json",
         MergeStrategy::dedicatedFile(), true, "Preview. VS Code needs a window reload before hooks fire.",
         std::nullopt},
        {"cursor", "Cursor (native hooks)", "cursor", home / ".cursor/hooks.json", MergeStrategy::flat(),
         false,
         "Opt-in, for the cursor-agent CLI. If Cursor's third-party hooks are on, this double-counts "
         "sessions.",
         home / ".cursor"},
        {"antigravity", "Google Antigravity", "antigravity", home / ".gemini/config/hooks.json",
         MergeStrategy::namedBlock("tovrin"), false,
         "Opt-in. Needs a post-1.0.8 CLI; not yet verified on a live install.", home / ".gemini"},
    };
}

} // namespace tovrin
