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

// A file padded with whitespace, so that it decodes if it is read at all.
std::string paddedTo(const std::string& json, std::size_t size) {
    return json + std::string(size - json.size(), ' ');
}

// The session ids read, sorted: listing order is not ours to rely on.
std::vector<std::string> idsOf(const std::vector<AgentSession>& sessions) {
    std::vector<std::string> ids;
    for (const auto& s : sessions)
        ids.push_back(s.sessionId);
    std::sort(ids.begin(), ids.end());
    return ids;
}

TEST(SessionFileReaderTest, EmptyOrMissingFolderYieldsNothing) {
    test::TempDir dir;
    EXPECT_TRUE(SessionFileReader(dir.path()).readAll().empty());
    EXPECT_TRUE(SessionFileReader(dir.path() / "missing").readAll().empty());
    dir.write("plain-file", fileFor("a"));
    EXPECT_TRUE(SessionFileReader(dir.path() / "plain-file").readAll().empty());
}

// Everything a status folder may hold beside the writer's files: only visible regular *.json files
// up to the size limit that decode are read, and nothing stalls the pass.
TEST(SessionFileReaderTest, OnlyWholeVisibleRegularJsonFilesAreRead) {
    test::TempDir dir;
    test::TempDir elsewhere;
    dir.write("good.json", fileFor("good"));
    dir.write("x.y.json", fileFor("dotted"));
    for (const char* name : {".hidden.json", "upper.JSON", "x.json.bak", "x.json~", "notes.txt", "json"})
        dir.write(name, fileFor(name));
    dir.write("sub.json/inner.json", fileFor("nested")); // a folder with a status name, not searched
    fs::create_symlink(elsewhere.write("target.json", fileFor("linked")), dir.path() / "link.json");
    fs::create_symlink(dir.path() / "good.json", dir.path() / "alias.json");
    fs::create_directory_symlink(elsewhere.path(), dir.path() / "folder.json");
    dir.write("at-limit.json", paddedTo(fileFor("at-limit"), SessionFileReader::maxFileSize));
    dir.write("over-limit.json", paddedTo(fileFor("over-limit"), SessionFileReader::maxFileSize + 1));
    dir.write("empty.json", "");
    for (const auto& entry : fs::directory_iterator(fs::path(TOVRIN_TEST_DATA_DIR) / "status-samples"))
        fs::copy_file(entry.path(), dir.path() / entry.path().filename()); // all malformed
    const auto fifo = dir.path() / "pipe.json";
    ASSERT_EQ(::mkfifo(fifo.c_str(), 0600), 0) << std::strerror(errno);
    const bool haveDevice = ::mknod((dir.path() / "null.json").c_str(), S_IFCHR | 0600, makedev(1, 3)) == 0;

    SessionFileReader reader(dir.path());
    auto pass = std::async(std::launch::async, [&] { return reader.readAll(); });
    if (pass.wait_for(std::chrono::seconds(5)) == std::future_status::timeout) {
        // Release the blocked open so that the test ends instead of hanging.
        const int writer = ::open(fifo.c_str(), O_WRONLY | O_NONBLOCK);
        if (writer >= 0) ::close(writer);
        FAIL() << "reading stalled on a FIFO";
    }
    const auto sessions = pass.get();
    EXPECT_EQ(idsOf(sessions), (std::vector<std::string>{"at-limit", "dotted", "good"}))
        << (haveDevice ? "" : "(no character device: mknod not permitted)");
    for (const auto& s : sessions)
        EXPECT_TRUE(s == test::session("claude-code", s.sessionId, SessionState::working, kUpdated));
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
