#include "sessions/ProcessLiveness.h"

#include <cerrno>
#include <csignal>
#include <limits>

namespace tovrin {

bool processExists(std::int64_t pid) {
    if (pid <= 0 || pid > std::numeric_limits<pid_t>::max()) return false;
    if (::kill(static_cast<pid_t>(pid), 0) == 0) return true;
    return errno == EPERM;
}

} // namespace tovrin
