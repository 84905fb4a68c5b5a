#pragma once

namespace tovrin {

// `tovrin watch`: the headless watcher for a terminal or a server over SSH. Runs the session
// store with the alert channels and prints one line per session that starts waiting, until
// interrupted. Returns the process exit code.
int runWatchCommand(int argc, char** argv);

} // namespace tovrin
