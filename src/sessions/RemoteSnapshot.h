#pragma once

#include <cstdint>
#include <map>
#include <set>
#include <string>

namespace tovrin {

// What one remote host last reported of its status folder: every status file by name, and which of
// the pids named in them run there.
struct RemoteSnapshot {
    std::map<std::string, std::string> files;
    std::set<std::int64_t> alivePids;

    bool operator==(const RemoteSnapshot&) const = default;
};

} // namespace tovrin
