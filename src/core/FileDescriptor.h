#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <sys/types.h>
#include <utility>

namespace tovrin {

// An owned file descriptor, closed when it goes. Its reads and writes go on after a signal
// interrupts them, so a caller never mistakes EINTR for the end or a failure.
class FileDescriptor {
public:
    explicit FileDescriptor(int fd = -1) : m_fd(fd) {}
    FileDescriptor(const FileDescriptor&) = delete;
    FileDescriptor& operator=(const FileDescriptor&) = delete;
    ~FileDescriptor();

    int get() const { return m_fd; }
    bool valid() const { return m_fd >= 0; }
    int release() { return std::exchange(m_fd, -1); }

    // Fills `out` up to `capacity` bytes or the end of the file; the count read, or -1 on an error.
    ssize_t readInto(char* out, std::size_t capacity) const;
    // Appends up to `limit` bytes, or all up to the end of the file; false on an error.
    bool readAppending(std::string& out, std::size_t limit) const;
    bool writeAll(std::string_view content) const;

private:
    int m_fd;
};

} // namespace tovrin
