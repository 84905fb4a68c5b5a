#pragma once

#include <string>

namespace tovrin {

// Opens the file manager on the folder that holds `path`, with that item selected. May block for
// a moment (it asks the desktop over IPC), so it is called off the main thread.
class FolderRevealing {
public:
    virtual ~FolderRevealing() = default;
    virtual void reveal(const std::string& path) = 0;
};

} // namespace tovrin
