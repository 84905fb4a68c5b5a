#include "platform/linux/PosixProcessRunner.h"

#include "support/ChildProcesses.h"
#include "support/TempDir.h"

#include <algorithm>
#include <chrono>
#include <fstream>
#include <gtest/gtest.h>
#include <thread>

namespace tovrin {
namespace {

using namespace std::chrono_literals;

bool noZombieChild() {
    return std::ranges::none_of(test::childProcesses(), &test::ChildProcess::ended);
}

template <typename Condition> bool waitUntil(Condition condition) {
    for (auto deadline = std::chrono::steady_clock::now() + 5s; !condition();) {
        if (std::chrono::steady_clock::now() > deadline) return false;
        std::this_thread::sleep_for(10ms);
    }
    return true;
}

TEST(PosixProcessRunnerTest, StartsTheProgramWithOutputToNullAndLeavesNoZombie) {
    test::TempDir dir;
    const auto marker = dir.path() / "ran";
    PosixProcessRunner runner;

    // The shell writes where its own output and error lead, which the runner points at /dev/null.
    ASSERT_TRUE(runner.start(
        "/bin/sh",
        {"-c",
         R"(o=$(readlink /proc/$$/fd/1); e=$(readlink /proc/$$/fd/2); echo "$o $e" >"$0.tmp"; mv "$0.tmp" "$0")",
         marker.string()}));

    ASSERT_TRUE(waitUntil([&] { return std::filesystem::exists(marker); }));
    std::ifstream written(marker);
    std::string out;
    std::string err;
    written >> out >> err;
    EXPECT_EQ(out, "/dev/null");
    EXPECT_EQ(err, "/dev/null");
    EXPECT_TRUE(waitUntil(noZombieChild)) << "a child was left unreaped";
}

TEST(PosixProcessRunnerTest, AProgramThatCannotStartIsReported) {
    test::TempDir dir;
    const auto notExecutable = dir.write("script.sh", "#!/bin/sh\n");
    PosixProcessRunner runner;
    EXPECT_FALSE(runner.start(dir.path() / "missing", {}));
    EXPECT_FALSE(runner.start(notExecutable, {}));
}

} // namespace
} // namespace tovrin
