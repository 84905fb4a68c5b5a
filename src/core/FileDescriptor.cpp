#include "core/FileDescriptor.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <unistd.h>

namespace tovrin {

FileDescriptor::~FileDescriptor() {
    if (m_fd >= 0) ::close(m_fd);
}

ssize_t FileDescriptor::readInto(char* out, std::size_t capacity) const {
    std::size_t total = 0;
    while (total < capacity) {
        const ssize_t n = ::read(m_fd, out + total, capacity - total);
        if (n < 0) {
            if (errno == EINTR) continue;
            return -1;
        }
        if (n == 0) break;
        total += static_cast<std::size_t>(n);
    }
    return static_cast<ssize_t>(total);
}

bool FileDescriptor::readAppending(std::string& out, std::size_t limit) const {
    std::array<char, 65536> buffer{};
    while (limit > 0) {
        const std::size_t wanted = std::min(buffer.size(), limit);
        const ssize_t n = readInto(buffer.data(), wanted);
        if (n < 0) return false;
        out.append(buffer.data(), static_cast<std::size_t>(n));
        if (static_cast<std::size_t>(n) < wanted) break; // the end of the file
        limit -= wanted;
    }
    return true;
}

bool FileDescriptor::writeAll(std::string_view content) const {
    while (!content.empty()) {
        const ssize_t n = ::write(m_fd, content.data(), content.size());
        if (n < 0) {
            if (errno == EINTR) continue;
            return false;
        }
        content.remove_prefix(static_cast<std::size_t>(n));
    }
    return true;
}

} // namespace tovrin
