#include "support/SamplePayload.h"

#include <fstream>
#include <sstream>
#include <stdexcept>

namespace tovrin::test {
namespace {

void put(const std::filesystem::path& file, std::string_view content) {
    std::filesystem::create_directories(file.parent_path());
    std::ofstream out(file, std::ios::binary | std::ios::trunc);
    out.write(content.data(), static_cast<std::streamsize>(content.size()));
    if (!out) throw std::runtime_error("could not write " + file.string());
}

} // namespace

AdapterResources writeSamplePayload(const std::filesystem::path& root) {
    put(root / "agent-status.sh", sampleWriter);
    const auto configs = root / "configs";
    put(configs / "claude-code.json",
        R"({"hooks": {"Stop": [{"hooks": [{"type": "command", "command": "{{AGENT_STATUS_SH}} claude-code stop"}]}],
            "Notification": [{"matcher": "", "hooks": [{"type": "command",
                              "command": "{{AGENT_STATUS_SH}} claude-code waiting"}]}]}})");
    put(configs / "codex.json",
        R"({"hooks": {"Stop": [{"hooks": [{"type": "command", "command": "{{AGENT_STATUS_SH}} codex-cli stop"}]}]}})");
    put(configs / "copilot-cli.json",
        R"({"version": 1, "hooks": {"sessionEnd": [{"type": "command", "bash": "{{AGENT_STATUS_SH}} copilot-cli end"}]}})");
    put(configs / "vscode.json",
        R"({"hooks": {"Stop": [{"type": "command", "command": "{{AGENT_STATUS_SH}} copilot-vscode stop"}]}})");
    put(configs / "cursor.json",
        R"({"version": 1, "hooks": {"stop": [{"command": "{{AGENT_STATUS_SH}} cursor-cli stop"}]}})");
    put(configs / "antigravity.json",
        R"({"tovrin": {"AfterAgent": [{"command": "{{AGENT_STATUS_SH}} antigravity-cli idle"}]}})");
    return AdapterResources{root};
}

} // namespace tovrin::test
