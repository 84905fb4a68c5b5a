#include "platform/linux/PosixProcessRunner.h"

#include "support/ChildProcesses.h"
#include "support/PollUntil.h"
#include "support/TempDir.h"

#include <algorithm>
#include <fstream>
#include <gtest/gtest.h>

namespace tovrin {
namespace {

TEST(PosixProcessRunnerTest, StartsTheProgramWithOutputToNullLeavesNoZombieAndReportsWhatCannotStart) {
    test::TempDir dir;
    const auto marker = dir.path() / "ran";
    PosixProcessRunner runner;

    // The shell writes where its own output and error lead, which the runner points at /dev/null.
    ASSERT_TRUE(runner.start(
        "/bin/sh",
        {"-c",
         R"(o=$(readlink /proc/$$/fd/1); e=$(readlink /proc/$$/fd/2); echo "$o $e" >"$0.tmp"; mv "$0.tmp" "$0")",
         marker.string()}));
    ASSERT_TRUE(test::pollUntil([&] { return std::filesystem::exists(marker); }));
    std::ifstream written(marker);
    std::string out;
    std::string err;
    written >> out >> err;
    EXPECT_EQ(out, "/dev/null");
    EXPECT_EQ(err, "/dev/null");
    EXPECT_TRUE(test::pollUntil([] {
        return std::ranges::none_of(test::childProcesses(), &test::ChildProcess::ended);
    })) << "a child was left unreaped";

    EXPECT_FALSE(runner.start(dir.path() / "missing", {}));
    EXPECT_FALSE(runner.start(dir.write("script.sh", "#!/bin/sh\n"), {}));
}

} // namespace
} // namespace tovrin
