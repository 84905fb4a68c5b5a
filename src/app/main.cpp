#include "app/cli/HooksCommand.h"
#include "app/cli/StatusCommand.h"
#include "app/cli/TelegramCommand.h"
#include "app/cli/WatchCommand.h"

#include <cstdio>
#include <cstring>

namespace {

constexpr const char* usage =
    "Usage: tovrin <command>\n"
    "\n"
    "Commands:\n"
    "  status            print the live session list once\n"
    "  status --json     print it as JSON for scripts\n"
    "  status --follow   keep the list on screen, redrawn on every change\n"
    "  hooks             list the agents Tovrin can hook into, and their state\n"
    "  hooks setup       install hooks for every agent found that is on by default\n"
    "  hooks install <id> | uninstall <id>\n"
    "                    install or remove the hooks of one agent\n"
    "  hooks remove-all  remove every hook and the status writer\n";

} // namespace

int main(int argc, char** argv) {
    if (argc >= 2 && std::strcmp(argv[1], "status") == 0) return tovrin::runStatusCommand(argc, argv);
    if (argc >= 2 && std::strcmp(argv[1], "hooks") == 0) return tovrin::runHooksCommand(argc, argv);
    if (argc >= 2 && std::strcmp(argv[1], "watch") == 0) return tovrin::runWatchCommand(argc, argv);
    if (argc >= 2 && std::strcmp(argv[1], "telegram") == 0) return tovrin::runTelegramCommand(argc, argv);
    if (argc >= 2 && (std::strcmp(argv[1], "--help") == 0 || std::strcmp(argv[1], "help") == 0)) {
        std::fputs(usage, stdout);
        return 0;
    }
    std::fputs(usage, stderr);
    return 2;
}
