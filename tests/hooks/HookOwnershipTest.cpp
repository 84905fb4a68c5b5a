#include "hooks/HookOwnership.h"

#include <gtest/gtest.h>

namespace tovrin {
namespace {

TEST(HookOwnership, OursRunsTheInstalledWriterAndNothingElseIs) {
    const HookOwnership plain("/home/ann/.tovrin/agent-status.sh");
    const HookOwnership spaced("/home/Ann Lee/.tovrin/agent-status.sh");
    const std::vector<std::tuple<const HookOwnership*, std::string, bool>> cases = {
        {&plain, "/home/ann/.tovrin/agent-status.sh claude-code Stop", true},
        {&plain, "  /home/ann/.tovrin/agent-status.sh", true},
        {&plain, "'/home/ann/.tovrin/agent-status.sh' codex-cli Stop", true},
        {&plain, "\"/home/ann/.tovrin/\"agent-status.sh x", true},
        {&spaced, "'/home/Ann Lee/.tovrin/agent-status.sh' claude-code Stop", true},
        {&spaced, "/home/Ann\\ Lee/.tovrin/agent-status.sh x", true},
        {&spaced, "\"/home/Ann Lee/.tovrin/agent-status.sh\" x", true},
        // A user's own script of the same name, or a command that only mentions ours.
        {&plain, "/home/ann/bin/agent-status.sh Stop", false},
        {&plain, "agent-status.sh Stop", false},
        {&plain, "echo /home/ann/.tovrin/agent-status.sh", false},
        {&plain, "/home/ann/.tovrin/agent-status.sh.bak x", false},
        {&plain, "/home/ann/.tovrin/agent-status.sh;rm -rf ~", false},
        {&plain, "'/home/ann/.tovrin/agent-status.sh x", false},
        {&spaced, "/home/Ann Lee/.tovrin/agent-status.sh x", false},
        {&plain, "", false},
    };
    for (const auto& [ownership, command, ours] : cases)
        EXPECT_EQ(ownership->isOurCommand(command), ours) << command;
}

} // namespace
} // namespace tovrin
