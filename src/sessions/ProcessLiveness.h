#pragma once

#include <cstdint>

namespace tovrin {

// Whether a process with this id exists, also if it belongs to another user. Ids that kill()
// would read as a process group or "every process" (0, negatives) or that do not fit a pid_t
// count as dead.
bool processExists(std::int64_t pid);

} // namespace tovrin
