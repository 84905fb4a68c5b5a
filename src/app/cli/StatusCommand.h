#pragma once

namespace tovrin {

// `tovrin status [--json | --follow]`: the live session list, once, as JSON, or redrawn on
// every refresh until interrupted. Returns the process exit code.
int runStatusCommand(int argc, char** argv);

} // namespace tovrin
