#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace tovrin {

// The ssh clients of this machine that connect to `destination` (named so among their arguments),
// leaving out this process's own children: those are its links to the host, not a terminal's.
std::vector<std::int64_t> sshClientsTo(const std::string& destination);

} // namespace tovrin
