#include "sessions/RemoteStatusFrames.h"

#include <gtest/gtest.h>
#include <vector>

namespace tovrin {
namespace {

const std::string kGreeting = std::string(RemoteStatusFrames::greeting) + "\n";

std::string frame(const std::string& name, const std::string& bytes) {
    return "F " + std::to_string(bytes.size()) + " " + name + "\n" + bytes + "\n";
}

struct Reader {
    std::vector<RemoteSnapshot> snapshots;
    RemoteStatusFrames frames{[this](RemoteSnapshot s) { snapshots.push_back(std::move(s)); }};
};

TEST(RemoteStatusFramesTest, AnySplitGivesTheSameSnapshotsAndFrameLikeBytesStayInTheirFile) {
    const std::string tricky = "{\"a\": 1}\nF 3 x.json\n{}\nP 1\nE\n";
    const std::string stream = "Welcome to the build box\n" + kGreeting + frame("a.json", tricky) +
                               frame("empty.json", "") + "P 42 7\nE\n" + "P\nE\n" + frame("b.json", "{}") +
                               "P 9\nE\n";
    const std::vector<RemoteSnapshot> expected = {
        {{{"a.json", tricky}, {"empty.json", ""}}, {7, 42}},
        {},
        {{{"b.json", "{}"}}, {9}},
    };

    Reader whole;
    ASSERT_TRUE(whole.frames.feed(stream)) << whole.frames.error();
    EXPECT_EQ(whole.snapshots, expected);

    Reader bytewise;
    for (char c : stream)
        ASSERT_TRUE(bytewise.frames.feed(std::string_view(&c, 1))) << bytewise.frames.error();
    EXPECT_EQ(bytewise.snapshots, expected);

    for (std::size_t at = 0; at <= stream.size(); ++at) {
        Reader split;
        ASSERT_TRUE(split.frames.feed(std::string_view(stream).substr(0, at)));
        ASSERT_TRUE(split.frames.feed(std::string_view(stream).substr(at)));
        ASSERT_EQ(split.snapshots, expected) << "split at " << at;
    }
}

TEST(RemoteStatusFramesTest, RefusesWhatIsOutOfFormOrOverACapAndStaysRefused) {
    std::string manyFiles;
    for (std::size_t i = 0; i <= RemoteStatusFrames::maxFiles; ++i)
        manyFiles += frame(std::to_string(i) + ".json", "{}");
    std::string heavy;
    const std::string mebibyte(1024 * 1024, ' ');
    for (int i = 0; i < 65; ++i)
        heavy += frame(std::to_string(i) + ".json", mebibyte);
    std::string longPids = "P";
    while (longPids.size() <= RemoteStatusFrames::maxPidLine)
        longPids += " 12345";

    const struct {
        const char* what;
        std::string stream;
    } cases[] = {
        {"no greeting in the first 64 KiB", std::string(70 * 1024, 'x')},
        {"a header line over 512 bytes", kGreeting + "F 2 " + std::string(600, 'a') + ".json\n{}\n"},
        {"a hidden name", kGreeting + frame(".a.json", "{}")},
        {"a name with a slash", kGreeting + frame("../a.json", "{}")},
        {"a name without .json", kGreeting + frame("notes.txt", "{}")},
        {"a count over 1 MiB", kGreeting + "F 1048577 a.json\n"},
        {"a signed count", kGreeting + "F +2 a.json\n{}\n"},
        {"a count that is not a number", kGreeting + "F 2x a.json\n{}\n"},
        {"a file longer than its count", kGreeting + "F 2 a.json\n{}}\n"},
        {"the same file twice", kGreeting + frame("a.json", "{}") + frame("a.json", "{}")},
        {"over 2000 files", kGreeting + manyFiles},
        {"over 64 MiB in one snapshot", kGreeting + heavy},
        {"a pid list over 64 KiB", kGreeting + longPids + "\n"},
        {"a pid that is not a number", kGreeting + "P 12 x3\nE\n"},
        {"a pid too large for 64 bits", kGreeting + "P 99999999999999999999\nE\n"},
        {"an unknown line", kGreeting + "X 1\n"},
        {"no end after the pids", kGreeting + "P 1\n" + frame("a.json", "{}")},
    };
    for (const auto& c : cases) {
        Reader reader;
        EXPECT_FALSE(reader.frames.feed(c.stream)) << c.what;
        EXPECT_FALSE(reader.frames.error().empty()) << c.what;
        EXPECT_FALSE(reader.frames.feed(kGreeting + "P\nE\n")) << c.what;
        EXPECT_TRUE(reader.snapshots.empty()) << c.what;
    }
}

} // namespace
} // namespace tovrin
