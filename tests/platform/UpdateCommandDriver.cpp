#include "app/cli/UpdateCommand.h"

#include <cstdio>

// The update command with the build's update settings given before its own arguments, so that tests
// can point it at a local feed and a key of their own:
//   tovrin-update-driver <feed> <key> <version> <build> update [--check]
// Copied into a folder laid out as an installation, it updates that installation.
int main(int argc, char** argv) {
    if (argc < 6) {
        std::fputs("Usage: tovrin-update-driver <feed> <key> <version> <build> update [--check]\n", stderr);
        return 2;
    }
    const tovrin::UpdateConfiguration configuration{
        .feed = argv[1], .publicKey = argv[2], .version = argv[3], .build = argv[4]};
    argv[4] = argv[0];
    return tovrin::runUpdateCommand(argc - 4, argv + 4, configuration);
}
