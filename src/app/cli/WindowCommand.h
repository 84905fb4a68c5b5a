#pragma once

#include <string>

namespace tovrin {

// `tovrin settings`, `tovrin feedback`: brings the window forward in the running tray application, starting
// the application when none runs. Returns the process exit code.
int runWindowCommand(const std::string& window, char** argv);

} // namespace tovrin
