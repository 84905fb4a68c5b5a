#include "sessions/SessionFileReader.h"

#include "core/Iso8601.h"
#include "support/SampleSessions.h"
#include "support/TempDir.h"

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <cstring>
#include <fcntl.h>
#include <future>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <sys/sysmacros.h>
#include <unistd.h>

namespace tovrin {
namespace {

namespace fs = std::filesystem;

const TimePoint kUpdated = *parseIso8601("2026-11-22T10:00:00Z");

std::string fileFor(const std::string& sessionId) {
    return test::statusFile("claude-code", sessionId, SessionState::working, kUpdated).dump();
}

// The session ids read, sorted: listing order is not ours to rely on.
std::vector<std::string> idsOf(const std::vector<AgentSession>& sessions) {
    std::vector<std::string> ids;
    for (const auto& s : sessions)
        ids.push_back(s.sessionId);
    std::sort(ids.begin(), ids.end());
    return ids;
}

std::vector<std::string> readIds(const fs::path& folder) {
    SessionFileReader reader(folder);
    return idsOf(reader.readAll());
}

TEST(SessionFileReaderTest, EmptyOrMissingFolderYieldsNothing) {
    test::TempDir dir;
    EXPECT_TRUE(SessionFileReader(dir.path()).readAll().empty());
    EXPECT_TRUE(SessionFileReader(dir.path() / "missing").readAll().empty());
    dir.write("plain-file", fileFor("a"));
    EXPECT_TRUE(SessionFileReader(dir.path() / "plain-file").readAll().empty());
}

TEST(SessionFileReaderTest, ReadsFullRecordsFromDisk) {
    test::TempDir dir;
    dir.write("a.json", fileFor("a"));
    dir.write("b.json", fileFor("b"));
    SessionFileReader reader(dir.path());
    auto sessions = reader.readAll();
    std::sort(sessions.begin(), sessions.end(),
              [](const AgentSession& x, const AgentSession& y) { return x.sessionId < y.sessionId; });
    ASSERT_EQ(sessions.size(), 2u);
    EXPECT_TRUE(sessions[0] == test::session("claude-code", "a", SessionState::working, kUpdated));
    EXPECT_TRUE(sessions[1] == test::session("claude-code", "b", SessionState::working, kUpdated));
}

TEST(SessionFileReaderTest, OnlyVisibleDotJsonNamesAreRead) {
    test::TempDir dir;
    dir.write("good.json", fileFor("good"));
    dir.write("x.y.json", fileFor("dotted"));
    dir.write(".hidden.json", fileFor("hidden"));
    dir.write("upper.JSON", fileFor("upper"));
    dir.write("x.json.bak", fileFor("bak"));
    dir.write("x.json~", fileFor("tilde"));
    dir.write("notes.txt", fileFor("txt"));
    dir.write("json", fileFor("bare"));
    dir.write("sub.json/inner.json", fileFor("nested")); // a folder with a status name, not searched
    EXPECT_EQ(readIds(dir.path()), (std::vector<std::string>{"dotted", "good"}));
}

TEST(SessionFileReaderTest, SymlinksAreNotFollowed) {
    test::TempDir dir;
    test::TempDir elsewhere;
    const auto target = elsewhere.write("target.json", fileFor("linked"));
    dir.write("good.json", fileFor("good"));
    fs::create_symlink(target, dir.path() / "link.json");
    fs::create_symlink(dir.path() / "good.json", dir.path() / "alias.json");
    fs::create_directory_symlink(elsewhere.path(), dir.path() / "folder.json");
    EXPECT_EQ(readIds(dir.path()), (std::vector<std::string>{"good"}));
}

TEST(SessionFileReaderTest, FifoIsSkippedWithoutBlocking) {
    test::TempDir dir;
    dir.write("good.json", fileFor("good"));
    const auto fifo = dir.path() / "pipe.json";
    ASSERT_EQ(::mkfifo(fifo.c_str(), 0600), 0) << std::strerror(errno);

    SessionFileReader reader(dir.path());
    auto pass = std::async(std::launch::async, [&] { return reader.readAll(); });
    if (pass.wait_for(std::chrono::seconds(5)) == std::future_status::timeout) {
        // Release the blocked open so that the test ends instead of hanging.
        const int writer = ::open(fifo.c_str(), O_WRONLY | O_NONBLOCK);
        if (writer >= 0) ::close(writer);
        FAIL() << "reading stalled on a FIFO";
    }
    EXPECT_EQ(idsOf(pass.get()), (std::vector<std::string>{"good"}));
}

TEST(SessionFileReaderTest, CharacterDeviceIsSkipped) {
    test::TempDir dir;
    dir.write("good.json", fileFor("good"));
    const auto node = dir.path() / "null.json";
    if (::mknod(node.c_str(), S_IFCHR | 0600, makedev(1, 3)) != 0) {
        GTEST_SKIP() << "mknod not permitted: " << std::strerror(errno);
    }
    EXPECT_EQ(readIds(dir.path()), (std::vector<std::string>{"good"}));
}

// A file padded with whitespace, so that it decodes if it is read at all.
std::string paddedTo(const std::string& json, std::size_t size) {
    return json + std::string(size - json.size(), ' ');
}

TEST(SessionFileReaderTest, FilesOverTheSizeLimitAreSkipped) {
    test::TempDir dir;
    dir.write("a.json", fileFor("a"));
    dir.write("at-limit.json", paddedTo(fileFor("at-limit"), SessionFileReader::maxFileSize));
    dir.write("over-limit.json", paddedTo(fileFor("over-limit"), SessionFileReader::maxFileSize + 1));
    dir.write("z.json", fileFor("z"));
    EXPECT_EQ(readIds(dir.path()), (std::vector<std::string>{"a", "at-limit", "z"}));
}

TEST(SessionFileReaderTest, MalformedFilesLeaveTheGoodOnes) {
    test::TempDir dir;
    dir.write("a.json", fileFor("a"));
    dir.write("empty.json", "");
    int samples = 0;
    for (const auto& entry : fs::directory_iterator(fs::path(TOVRIN_TEST_DATA_DIR) / "status-samples")) {
        fs::copy_file(entry.path(), dir.path() / entry.path().filename());
        ++samples;
    }
    ASSERT_GT(samples, 0);
    dir.write("z.json", fileFor("z"));
    EXPECT_EQ(readIds(dir.path()), (std::vector<std::string>{"a", "z"}));
}

TEST(SessionFileReaderTest, FileIsReadAgainAtTheNextPass) {
    test::TempDir dir;
    const std::string whole = fileFor("late");
    // The reused read buffer may hold a longer file's bytes behind the torn one.
    dir.write("big.json", paddedTo(fileFor("big"), 4096));
    dir.write("late.json", whole.substr(0, whole.size() - 1));
    SessionFileReader reader(dir.path());
    EXPECT_EQ(idsOf(reader.readAll()), (std::vector<std::string>{"big"}));

    dir.write("late.json", whole);
    EXPECT_EQ(idsOf(reader.readAll()), (std::vector<std::string>{"big", "late"}));
}

} // namespace
} // namespace tovrin
