#include "app/desktop/AppCoordinator.h"

#include "support/ManualLoop.h"
#include "support/SampleSessions.h"
#include "support/ScopedEnv.h"
#include "support/TempDir.h"

#include <gtest/gtest.h>
#include <unistd.h>

namespace tovrin {
namespace {

using test::ScopedEnv;

// A private home and status folder, and no session bus or display, so that alerts go nowhere.
class AppCoordinatorTest : public ::testing::Test {
protected:
    test::TempDir home;
    std::filesystem::path statusDir = home.path() / "missing" / "parents" / "status";
    ScopedEnv homeEnv{"HOME", home.path().string()};
    ScopedEnv configEnv{"XDG_CONFIG_HOME", (home.path() / ".config").string()};
    ScopedEnv statusEnv{"AGENT_STATUS_DIR", statusDir.string()};
    ScopedEnv busEnv{"DBUS_SESSION_BUS_ADDRESS", "unix:path=/nonexistent"};
    ScopedEnv displayEnv{"DISPLAY", ":999"};
    test::ManualLoop loop;
    SystemClock clock;
};

TEST_F(AppCoordinatorTest, BuildingReadsNothingAndStartMakesTheFolderAndRunsThePipeline) {
    AppCoordinator coordinator(loop, clock);
    EXPECT_FALSE(std::filesystem::exists(statusDir)) << "nothing happens before start";

    coordinator.start();
    ASSERT_TRUE(std::filesystem::is_directory(statusDir)) << "the folder is made with its parents";
    EXPECT_FALSE(coordinator.trayViewModel().hasSessions());

    auto file = test::statusFile("claude-code", "s1", SessionState::waiting, clock.now());
    file["pid"] = static_cast<int>(getpid());
    home.write("missing/parents/status/s1.json", file.dump());
    coordinator.start(); // a second start is harmless
    loop.advance(15);    // the store's tick picks the file up, if the watcher hasn't yet
    ASSERT_EQ(coordinator.trayViewModel().waiting().size(), 1u);
    EXPECT_EQ(coordinator.trayViewModel().aggregate(), AggregateStatus::waiting(1));

    // Sessions already waiting at launch are published by the first pass, not a tick later.
    AppCoordinator relaunched(loop, clock);
    EXPECT_FALSE(relaunched.trayViewModel().hasSessions());
    relaunched.start();
    loop.drain();
    EXPECT_EQ(relaunched.trayViewModel().waiting().size(), 1u);
}

} // namespace
} // namespace tovrin
