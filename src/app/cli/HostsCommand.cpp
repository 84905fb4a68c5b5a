#include "app/cli/HostsCommand.h"

#include "app/SessionTracking.h"
#include "sessions/RemoteHostList.h"

#include <cstdio>
#include <string>

namespace tovrin {

int runHostsCommand(int argc, char** argv) {
    const std::string verb = argc >= 3 ? argv[2] : "list";
    UserSettings settings;
    RemoteHostList hosts(settings.preferences);
    if (verb == "list" && argc <= 3) {
        for (const auto& host : hosts.all())
            std::printf("%s\n", host.c_str());
        return 0;
    }
    if ((verb == "add" || verb == "remove") && argc == 4) {
        const auto done = verb == "add" ? hosts.add(argv[3]) : hosts.remove(argv[3]);
        if (!done) {
            std::fprintf(stderr, "tovrin: %s\n", done.error().c_str());
            return 1;
        }
        return 0;
    }
    std::fputs("Usage: tovrin hosts [list] | add <ssh destination> | remove <ssh destination>\n", stderr);
    return 2;
}

} // namespace tovrin
