#pragma once

#include <filesystem>
#include <optional>

namespace tovrin::DesktopEnvironment {

// Settles how Qt starts, before the application object exists: the X11 platform when a display is
// there and the user chose none (a chip can stay on top and other windows be raised only on X11),
// and no desktop platform theme, since every window draws its own and a GTK theme plugin alone
// would add tens of megabytes and a slow start.
void prepareQt();

// Holds an exclusive lock on a file in the user's runtime folder for the life of the process, so a
// second copy can tell that one already runs and two never alert twice. Nothing when it is held.
class InstanceLock {
public:
    static std::optional<InstanceLock> acquire(const std::filesystem::path& file);
    static std::filesystem::path defaultFile();
    InstanceLock(InstanceLock&& other) noexcept;
    InstanceLock& operator=(InstanceLock&&) = delete;
    ~InstanceLock();

private:
    explicit InstanceLock(int fd) : m_fd(fd) {}
    int m_fd = -1;
};

} // namespace tovrin::DesktopEnvironment
