#pragma once

namespace tovrin {

// Tells, through the callback it was built with, that a directory has changed.
// Stops for good when destroyed.
class DirectoryWatching {
public:
    virtual ~DirectoryWatching() = default;
    virtual void start() = 0;
    virtual void stop() = 0;
};

} // namespace tovrin
