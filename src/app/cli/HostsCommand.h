#pragma once

namespace tovrin {

// `tovrin hosts [list] | add <destination> | remove <destination>`: the remote hosts whose status
// folders are watched over ssh. Returns the process exit code.
int runHostsCommand(int argc, char** argv);

} // namespace tovrin
