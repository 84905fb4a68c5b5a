#pragma once

#include <string>

namespace tovrin {

// A random (version 4) UUID in its upper-case text form, "E621E1F8-C36C-495A-93FC-0C247A3E6E5F".
std::string randomUuidString();

} // namespace tovrin
