#include "app/cli/HooksCommand.h"
#include "app/cli/HostsCommand.h"
#include "app/cli/StatusCommand.h"
#include "app/cli/TelegramCommand.h"
#include "app/cli/UpdateCommand.h"
#include "app/cli/WatchCommand.h"
#include "app/cli/WindowCommand.h"
#include "core/BuildInfo.h"
#include "platform/linux/InstallationPaths.h"
#include "ui/viewmodels/AboutContent.h"

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>
#include <unistd.h>

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
    "  hooks install <id> --host <destination> | uninstall <id> --host <destination>\n"
    "                    the same on a remote host, over ssh\n"
    "  hooks remove-all  remove every hook and the status writer\n"
    "  hosts             list the remote hosts watched over ssh\n"
    "  hosts add <destination> | remove <destination>\n"
    "                    watch a host's agents too, or stop\n"
    "  watch             alert on waiting sessions from a terminal, without windows\n"
    "  telegram setup    link a Telegram chat for alerts on your phone\n"
    "  settings          open the settings window (in the running tray application)\n"
    "  feedback          open the feedback window (in the running tray application)\n"
    "  update            install the newest release (self-contained installations)\n"
    "  update --check    tell whether a newer release is available\n"
    "  --version         print the version and build number\n"
    "\n"
    "Without a command, Tovrin starts in the system tray.\n";

bool hasDisplay() {
    return std::getenv("DISPLAY") != nullptr || std::getenv("WAYLAND_DISPLAY") != nullptr ||
           std::getenv("QT_QPA_PLATFORM") != nullptr;
}

// The tray application is its own executable, so that the commands load no widget libraries.
int startDesktop(char** argv) {
    if (!hasDisplay()) {
        std::fputs("tovrin: no display to show the tray application on.\n"
                   "Use 'tovrin status --follow' to see the sessions, or 'tovrin watch' for alerts.\n",
                   stderr);
        return 1;
    }
    const auto desktop = tovrin::InstallationPaths::desktopExecutable();
    if (desktop) execv(desktop->c_str(), argv);
    std::fprintf(stderr, "tovrin: cannot start %s: %s\n", desktop ? desktop->c_str() : "the tray application",
                 std::strerror(errno));
    return 1;
}

// The About window's line with the product's name in place of its leading "Version".
void printVersion() {
    // The same stand-ins as the About window's line, so that both always agree.
    std::printf("Tovrin %s\n", tovrin::AboutContent::versionAndBuild(
                                   tovrin::BuildInfo::version, tovrin::BuildInfo::buildNumber, "1.0", "1")
                                   .c_str());
}

} // namespace

int main(int argc, char** argv) {
    if (argc < 2) return startDesktop(argv);
    if (argc >= 2 && std::strcmp(argv[1], "status") == 0) return tovrin::runStatusCommand(argc, argv);
    if (argc >= 2 && std::strcmp(argv[1], "hooks") == 0) return tovrin::runHooksCommand(argc, argv);
    if (argc >= 2 && std::strcmp(argv[1], "hosts") == 0) return tovrin::runHostsCommand(argc, argv);
    if (argc >= 2 && std::strcmp(argv[1], "watch") == 0) return tovrin::runWatchCommand(argc, argv);
    if (argc >= 2 && std::strcmp(argv[1], "telegram") == 0) return tovrin::runTelegramCommand(argc, argv);
    if (argc >= 2 && std::strcmp(argv[1], "update") == 0)
        return tovrin::runUpdateCommand(argc, argv, tovrin::UpdateConfiguration::ofThisBuild());
    if (argc == 2 && (std::strcmp(argv[1], "settings") == 0 || std::strcmp(argv[1], "feedback") == 0)) {
        if (!hasDisplay()) return startDesktop(argv);
        return tovrin::runWindowCommand(argv[1], argv);
    }
    if (argc == 2 && std::strcmp(argv[1], "--version") == 0) {
        printVersion();
        return 0;
    }
    if (argc >= 2 && (std::strcmp(argv[1], "--help") == 0 || std::strcmp(argv[1], "help") == 0)) {
        std::fputs(usage, stdout);
        return 0;
    }
    std::fputs(usage, stderr);
    return 2;
}
