#include "sessions/ProcessLiveness.h"

#include "sessions/SessionStore.h"
#include "support/ChildProcesses.h"
#include "support/FakeSessionReader.h"
#include "support/ManualLoop.h"
#include "support/MemoryDefaultsStore.h"
#include "support/SampleSessions.h"

#include <cerrno>
#include <csignal>
#include <cstdint>
#include <gtest/gtest.h>
#include <limits>
#include <sys/wait.h>
#include <unistd.h>

namespace tovrin {
namespace {

class ProcessLivenessTest : public ::testing::Test {
protected:
    // Whether a session of this pid and a week-old file survives a pass. No gtest macros here:
    // forked children call it too.
    bool keptThroughStore(std::int64_t pid) {
        auto s = test::session("t", "a", SessionState::idle, addSeconds(loop.clock().now(), -7 * 86400));
        s.pid = pid;
        reader.set({s});
        store.refresh();
        return store.sessions().size() == 1;
    }

    test::ManualLoop loop;
    MemoryDefaultsStore defaults;
    PreferencesStore preferences{defaults};
    test::FakeSessionReader reader;
    SessionStore store{reader, preferences, {}, nullptr, loop, loop.clock()};
};

TEST_F(ProcessLivenessTest, ALiveChildKeepsItsSessionAndAReapedOneLosesIt) {
    const pid_t child = test::spawnQuietly({"sleep", "30"});
    ASSERT_GT(child, 0);
    EXPECT_TRUE(keptThroughStore(child));
    ::kill(child, SIGKILL);
    test::exitStatusOf(child); // reaped
    EXPECT_FALSE(keptThroughStore(child));
}

TEST_F(ProcessLivenessTest, IdsThatAreNoSingleProcessCountAsDead) {
    const std::int64_t self = ::getpid();
    EXPECT_TRUE(processExists(self));
    // kill() would read 0 and negatives as process groups or "everyone", and a cut-down 64-bit id
    // would name some other process (here: this one).
    const std::int64_t aboveRange = std::int64_t{std::numeric_limits<std::int32_t>::max()} + 1;
    for (const std::int64_t pid :
         {std::int64_t{0}, std::int64_t{-1}, -self, std::numeric_limits<std::int64_t>::min(), aboveRange,
          (std::int64_t{1} << 32) + self}) {
        EXPECT_FALSE(processExists(pid)) << pid;
        EXPECT_FALSE(keptThroughStore(pid)) << pid;
    }
}

TEST_F(ProcessLivenessTest, AProcessOfAnotherUserKeepsItsSession) {
    if (::geteuid() != 0) {
        // Not root: pid 1 is someone else's if kill() says so, which is the case itself.
        if (::kill(1, 0) == 0 || errno != EPERM)
            GTEST_SKIP() << "needs root or a visible process of another user";
        EXPECT_TRUE(keptThroughStore(1));
        return;
    }
    const pid_t child = ::fork();
    ASSERT_GE(child, 0);
    if (child == 0) {
        // As nobody, root's pid 1 can only answer EPERM.
        if (::setgid(65534) != 0 || ::setuid(65534) != 0) ::_exit(2);
        if (::kill(1, 0) == 0 || errno != EPERM) ::_exit(3);
        ::_exit(keptThroughStore(1) ? 0 : 1);
    }
    int status = 0;
    ASSERT_EQ(::waitpid(child, &status, 0), child);
    ASSERT_TRUE(WIFEXITED(status));
    EXPECT_EQ(WEXITSTATUS(status), 0)
        << "1: session dropped, 2: could not drop privileges, 3: pid 1 not foreign";
}

} // namespace
} // namespace tovrin
