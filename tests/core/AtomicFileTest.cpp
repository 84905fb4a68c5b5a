#include "core/AtomicFile.h"

#include "support/FileSizeCap.h"
#include "support/TempDir.h"

#include <chrono>
#include <fcntl.h>
#include <future>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

namespace tovrin {
namespace {

namespace fs = std::filesystem;
using namespace std::chrono_literals;

TEST(AtomicFile, FailureNamesThePathAndLeavesNoTempFile) {
    test::TempDir dir;
    fs::create_directories(dir.path() / "occupied" / "inner");
    // Targets that fail for root too: a folder in the way, and a parent that does not exist.
    for (const auto& target : {dir.path() / "occupied", dir.path() / "missing" / "file.json"}) {
        SCOPED_TRACE(target.string());
        const auto written = writeFileAtomically(target, "content");
        ASSERT_FALSE(written.ok());
        EXPECT_NE(written.error().find(target.filename().string()), std::string::npos) << written.error();
        EXPECT_EQ(test::entriesOf(dir.path()), std::vector<std::string>{"occupied"});
        EXPECT_EQ(test::entriesOf(dir.path() / "occupied"), std::vector<std::string>{"inner"});
    }
}

TEST(AtomicFile, AWriteThatFailsHalfWayLeavesTheOldFileWhole) {
    test::TempDir dir;
    const auto file = dir.write("settings.json", "{\"old\": true}\n");
    const auto written = [&] {
        const test::FileSizeCap cap(4096);
        return writeFileAtomically(file, std::string(100'000, 'x'));
    }();
    ASSERT_FALSE(written.ok());
    EXPECT_FALSE(written.error().empty());
    EXPECT_EQ(readWholeFile(file).value(), "{\"old\": true}\n");
    EXPECT_EQ(test::entriesOf(dir.path()), std::vector<std::string>{"settings.json"});
}

// A FIFO must not make the read wait for a writer.
TEST(AtomicFile, ReadRefusesWhatIsNoRegularFileWithoutWaiting) {
    test::TempDir dir;
    fs::create_directories(dir.path() / "folder");
    EXPECT_FALSE(readWholeFile(dir.path() / "folder").ok());
    EXPECT_FALSE(readWholeFile(dir.path() / "missing").ok());

    const auto fifo = dir.path() / "status.json";
    ASSERT_EQ(::mkfifo(fifo.c_str(), 0600), 0);
    auto reading = std::async(std::launch::async, [&] { return readWholeFile(fifo).ok(); });
    if (reading.wait_for(5s) != std::future_status::ready) {
        ADD_FAILURE() << "readWholeFile blocked on a FIFO";
        // Release the blocked reader so that the test can end.
        const int writer = ::open(fifo.c_str(), O_WRONLY | O_NONBLOCK);
        if (writer >= 0) ::close(writer);
    }
    EXPECT_FALSE(reading.get());
}

} // namespace
} // namespace tovrin
