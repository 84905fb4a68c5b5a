#include "sessions/SessionFileReader.h"

#include <cerrno>
#include <dirent.h>
#include <fcntl.h>
#include <memory>
#include <sys/stat.h>
#include <unistd.h>

namespace tovrin {
namespace {

struct DirCloser {
    void operator()(DIR* d) const { ::closedir(d); }
};

struct FdCloser {
    int fd;
    ~FdCloser() { ::close(fd); }
};

// Reads up to `capacity` bytes; returns the count, or -1 on error.
ssize_t readUpTo(int fd, char* out, std::size_t capacity) {
    std::size_t total = 0;
    while (total < capacity) {
        const ssize_t n = ::read(fd, out + total, capacity - total);
        if (n < 0) {
            if (errno == EINTR) continue;
            return -1;
        }
        if (n == 0) break;
        total += static_cast<std::size_t>(n);
    }
    return static_cast<ssize_t>(total);
}

} // namespace

SessionFileReader::SessionFileReader(std::filesystem::path directory) : m_directory(std::move(directory)) {}

bool SessionFileReader::isStatusFileName(std::string_view name) {
    constexpr std::string_view extension = ".json";
    return !name.empty() && name.front() != '.' && name.size() > extension.size() &&
           name.ends_with(extension);
}

std::vector<AgentSession> SessionFileReader::readAll() {
    std::vector<AgentSession> sessions;
    std::unique_ptr<DIR, DirCloser> dir(::opendir(m_directory.c_str()));
    if (!dir) return sessions;
    const int dirFd = ::dirfd(dir.get());

    while (const dirent* entry = ::readdir(dir.get())) {
        const std::string_view name = entry->d_name;
        if (!isStatusFileName(name)) continue;
        if (entry->d_type != DT_REG && entry->d_type != DT_UNKNOWN) continue;

        // O_NONBLOCK: a FIFO or device must never stall the pass; O_NOFOLLOW: no symlinks.
        const int fd =
            ::openat(dirFd, entry->d_name, O_RDONLY | O_NONBLOCK | O_NOFOLLOW | O_CLOEXEC | O_NOCTTY);
        if (fd < 0) continue;
        const FdCloser closer{fd};
        struct stat info {};
        if (::fstat(fd, &info) != 0 || !S_ISREG(info.st_mode)) continue;
        if (static_cast<std::size_t>(info.st_size) > maxFileSize) continue;

        // The size from fstat is all we read: a file still being written fails to decode and
        // is read again at the next pass.
        const auto size = static_cast<std::size_t>(info.st_size);
        if (m_buffer.size() < size + SessionFileDecoder::padding)
            m_buffer.resize(size + SessionFileDecoder::padding);
        const ssize_t length = readUpTo(fd, m_buffer.data(), size);
        if (length <= 0) continue;

        if (auto session = m_decoder.decodePadded(m_buffer.data(), static_cast<std::size_t>(length))) {
            sessions.push_back(std::move(*session));
        }
    }
    return sessions;
}

} // namespace tovrin
