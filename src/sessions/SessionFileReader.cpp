#include "sessions/SessionFileReader.h"

#include "core/FileDescriptor.h"

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
        const FileDescriptor fd(
            ::openat(dirFd, entry->d_name, O_RDONLY | O_NONBLOCK | O_NOFOLLOW | O_CLOEXEC | O_NOCTTY));
        if (!fd.valid()) continue;
        struct stat info {};
        if (::fstat(fd.get(), &info) != 0 || !S_ISREG(info.st_mode)) continue;
        if (static_cast<std::size_t>(info.st_size) > maxFileSize) continue;

        // The size from fstat is all we read: a file still being written fails to decode and
        // is read again at the next pass.
        const auto size = static_cast<std::size_t>(info.st_size);
        if (m_buffer.size() < size + SessionFileDecoder::padding)
            m_buffer.resize(size + SessionFileDecoder::padding);
        const ssize_t length = fd.readInto(m_buffer.data(), size);
        if (length <= 0) continue;

        if (auto session = m_decoder.decodePadded(m_buffer.data(), static_cast<std::size_t>(length))) {
            sessions.push_back(std::move(*session));
        }
    }
    return sessions;
}

} // namespace tovrin
