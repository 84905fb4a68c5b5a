#pragma once

namespace tovrin {

// `tovrin hooks [install <id> | uninstall <id> | setup | remove-all]`: the hook section of the
// settings window for terminal users, with the same words. Returns the process exit code.
int runHooksCommand(int argc, char** argv);

} // namespace tovrin
