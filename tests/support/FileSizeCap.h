#pragma once

#include <csignal>
#include <gtest/gtest.h>
#include <sys/resource.h>

namespace tovrin::test {

// A disk that fills up mid-write, played by a cap on the size of any file this process writes:
// the write that passes it fails with EFBIG, as a full disk's would, wherever the test runs and
// also for root. The cap and the signal's handling are put back when this goes.
class FileSizeCap {
public:
    explicit FileSizeCap(rlim_t bytes) {
        ::getrlimit(RLIMIT_FSIZE, &m_saved);
        m_savedSignal = std::signal(SIGXFSZ, SIG_IGN);
        const rlimit cap{bytes, m_saved.rlim_max};
        EXPECT_EQ(::setrlimit(RLIMIT_FSIZE, &cap), 0);
    }
    ~FileSizeCap() {
        ::setrlimit(RLIMIT_FSIZE, &m_saved);
        std::signal(SIGXFSZ, m_savedSignal);
    }
    FileSizeCap(const FileSizeCap&) = delete;
    FileSizeCap& operator=(const FileSizeCap&) = delete;

private:
    rlimit m_saved{};
    void (*m_savedSignal)(int) = SIG_DFL;
};

} // namespace tovrin::test
