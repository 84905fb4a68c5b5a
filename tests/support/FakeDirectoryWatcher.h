#pragma once

#include "sessions/DirectoryWatching.h"

namespace tovrin::test {

// Counts its starts in a counter the test keeps; the test calls the change callback itself.
class FakeDirectoryWatcher final : public DirectoryWatching {
public:
    explicit FakeDirectoryWatcher(int& starts) : m_starts(starts) {}
    void start() override { ++m_starts; }
    void stop() override {}

private:
    int& m_starts;
};

} // namespace tovrin::test
