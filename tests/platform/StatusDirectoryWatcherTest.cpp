#include "platform/linux/StatusDirectoryWatcher.h"

#include "support/TempDir.h"

#include <chrono>
#include <condition_variable>
#include <cstdio>
#include <gtest/gtest.h>
#include <mutex>
#include <thread>
#include <vector>

namespace tovrin {
namespace {

using Steady = std::chrono::steady_clock;
using namespace std::chrono_literals;

// Records the times of onChange calls, which arrive on the watcher's thread.
class CallRecorder {
public:
    void record() {
        const std::lock_guard lock(m_mutex);
        m_calls.push_back(Steady::now());
        m_changed.notify_all();
    }
    bool waitForCalls(std::size_t n, std::chrono::milliseconds timeout) {
        std::unique_lock lock(m_mutex);
        return m_changed.wait_for(lock, timeout, [&] { return m_calls.size() >= n; });
    }
    std::vector<Steady::time_point> calls() {
        const std::lock_guard lock(m_mutex);
        return m_calls;
    }

private:
    std::mutex m_mutex;
    std::condition_variable m_changed;
    std::vector<Steady::time_point> m_calls;
};

class StatusDirectoryWatcherTest : public ::testing::Test {
protected:
    test::TempDir dir;
    CallRecorder recorder;
    StatusDirectoryWatcher watcher{dir.path(), Seconds(0.2), [this] { recorder.record(); }};
};

// Started twice it still watches once: a second watch would double the one call a burst gives.
TEST_F(StatusDirectoryWatcherTest, ABurstGivesOneCallAfterTheDebounceRenamesAndDeletesCountAndStopEnds) {
    watcher.start();
    watcher.start();
    Steady::time_point lastWrite;
    for (int i = 0; i < 10; ++i) {
        dir.write("burst.json", "{\"n\":" + std::to_string(i) + "}");
        lastWrite = Steady::now();
        std::this_thread::sleep_for(10ms);
    }
    ASSERT_TRUE(recorder.waitForCalls(1, 3000ms));
    std::this_thread::sleep_for(400ms);
    ASSERT_EQ(recorder.calls().size(), 1u);
    EXPECT_GE(recorder.calls()[0] - lastWrite, 200ms);

    const auto renamed = dir.path() / "b.json";
    ASSERT_EQ(std::rename((dir.path() / "burst.json").c_str(), renamed.c_str()), 0);
    ASSERT_TRUE(recorder.waitForCalls(2, 3000ms));
    ASSERT_EQ(std::remove(renamed.c_str()), 0);
    ASSERT_TRUE(recorder.waitForCalls(3, 3000ms));
    // An atomic replace as the status writer does it: temp file, then rename over.
    dir.write(".tmp.x", "{}");
    ASSERT_EQ(std::rename((dir.path() / ".tmp.x").c_str(), (dir.path() / "c.json").c_str()), 0);
    ASSERT_TRUE(recorder.waitForCalls(4, 3000ms));

    std::this_thread::sleep_for(300ms);
    const auto before = recorder.calls().size();
    watcher.stop();
    EXPECT_FALSE(watcher.running());
    dir.write("d.json", "{}");
    std::this_thread::sleep_for(400ms);
    EXPECT_EQ(recorder.calls().size(), before);
}

TEST(StatusDirectoryWatcher, AMissingFolderIsLeftAloneAndDestructionWhilePendingIsClean) {
    CallRecorder recorder;
    StatusDirectoryWatcher missing("/nonexistent/tovrin-status", Seconds(0.2), [&] { recorder.record(); });
    missing.start();
    EXPECT_FALSE(missing.running());

    test::TempDir dir;
    {
        StatusDirectoryWatcher watcher(dir.path(), Seconds(0.2), [&] { recorder.record(); });
        watcher.start();
        dir.write("a.json", "{}");
        std::this_thread::sleep_for(50ms); // an event is pending when the watcher goes
    }
    std::this_thread::sleep_for(300ms);
    EXPECT_TRUE(recorder.calls().empty());
}

} // namespace
} // namespace tovrin
