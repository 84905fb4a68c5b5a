#pragma once

#include "services/update/UpdateConfiguration.h"

namespace tovrin {

// `tovrin update [--check]`: tells whether a newer release is available and, without --check,
// installs it in place of this installation when it is the self-contained archive. Returns the
// process exit code: non-zero on any failure, and when a package manager owns the installation.
int runUpdateCommand(int argc, char** argv, const UpdateConfiguration& configuration);

} // namespace tovrin
