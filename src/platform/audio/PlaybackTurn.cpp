#include "platform/audio/PlaybackTurn.h"

#include <chrono>
#include <csignal>
#include <cstdlib>
#include <fcntl.h>
#include <thread>
#include <unistd.h>

namespace tovrin {
namespace {

using namespace std::chrono_literals;

struct flock wholeFile(short type) {
    struct flock lock {};
    lock.l_type = type;
    lock.l_whence = SEEK_SET;
    return lock;
}

} // namespace

std::optional<std::filesystem::path> PlaybackTurn::defaultLockFile() {
    const char* runtime = std::getenv("XDG_RUNTIME_DIR");
    if (!runtime || *runtime != '/') return std::nullopt;
    return std::filesystem::path(runtime) / "tovrin-sound.lock";
}

PlaybackTurn::PlaybackTurn(const std::optional<std::filesystem::path>& lockFile) {
    if (!lockFile) return;
    m_fd = ::open(lockFile->c_str(), O_RDWR | O_CREAT | O_CLOEXEC | O_NOFOLLOW, 0600);
    if (m_fd < 0) return;
    // A stopped sound lets go within a chunk's time; a second covers a slow sound server.
    const auto deadline = std::chrono::steady_clock::now() + 1s;
    pid_t asked = 0;
    for (;;) {
        struct flock lock = wholeFile(F_WRLCK);
        if (::fcntl(m_fd, F_SETLK, &lock) == 0) {
            m_held = true;
            return;
        }
        struct flock holder = wholeFile(F_WRLCK);
        if (::fcntl(m_fd, F_GETLK, &holder) == 0 && holder.l_type != F_UNLCK && holder.l_pid > 0 &&
            holder.l_pid != asked) {
            ::kill(holder.l_pid, SIGTERM);
            asked = holder.l_pid;
        }
        if (std::chrono::steady_clock::now() > deadline) return;
        std::this_thread::sleep_for(10ms);
    }
}

PlaybackTurn::~PlaybackTurn() {
    if (m_fd >= 0) ::close(m_fd);
}

} // namespace tovrin
