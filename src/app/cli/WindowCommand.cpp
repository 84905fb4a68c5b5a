#include "app/cli/WindowCommand.h"

#include "platform/dbus/WindowRequests.h"
#include "platform/linux/InstallationPaths.h"

#include <QCoreApplication>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <unistd.h>

namespace tovrin {

int runWindowCommand(const std::string& window, char** argv) {
    {
        int argc = 1;
        QCoreApplication bus(argc, argv);
        if (WindowRequests::request(window, std::chrono::milliseconds(0)) == WindowRequests::Outcome::shown)
            return 0;
    }
    // None runs (or none answers yet): the tray application starts with the window, or hands the
    // request on to a copy that won the race to start.
    const auto desktop = InstallationPaths::desktopExecutable();
    const std::string show = "--show=" + window;
    if (desktop) {
        char* const args[] = {const_cast<char*>(desktop->c_str()), const_cast<char*>(show.c_str()), nullptr};
        ::execv(desktop->c_str(), args);
    }
    std::fprintf(stderr, "tovrin: cannot start %s: %s\n", desktop ? desktop->c_str() : "the tray application",
                 std::strerror(errno));
    return 1;
}

} // namespace tovrin
