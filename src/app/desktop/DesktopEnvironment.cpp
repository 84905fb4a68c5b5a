#include "app/desktop/DesktopEnvironment.h"

#include "core/UserPaths.h"

#include <QGuiApplication>
#include <cstdlib>
#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>
#include <utility>

namespace tovrin::DesktopEnvironment {

void prepareQt() {
    if (std::getenv("DISPLAY") != nullptr && std::getenv("QT_QPA_PLATFORM") == nullptr) {
        setenv("QT_QPA_PLATFORM", "xcb", 1);
    }
    unsetenv("QT_QPA_PLATFORMTHEME");
    QGuiApplication::setDesktopSettingsAware(false);
}

std::filesystem::path InstanceLock::defaultFile() {
    const char* runtime = std::getenv("XDG_RUNTIME_DIR");
    const std::filesystem::path folder =
        runtime && *runtime ? std::filesystem::path(runtime) : UserPaths::configHome() / "tovrin";
    return folder / "tovrin-desktop.lock";
}

std::optional<InstanceLock> InstanceLock::acquire(const std::filesystem::path& file) {
    std::error_code ignored;
    std::filesystem::create_directories(file.parent_path(), ignored);
    const int fd = ::open(file.c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0600);
    if (fd < 0) return InstanceLock(-1); // can't tell: better two copies than none
    if (::flock(fd, LOCK_EX | LOCK_NB) != 0) {
        ::close(fd);
        return std::nullopt;
    }
    return InstanceLock(fd);
}

InstanceLock::InstanceLock(InstanceLock&& other) noexcept : m_fd(std::exchange(other.m_fd, -1)) {}

InstanceLock::~InstanceLock() {
    if (m_fd >= 0) ::close(m_fd);
}

} // namespace tovrin::DesktopEnvironment
