#include "hooks/HookFileStore.h"

#include "hooks/HookFileError.h"
#include "support/FileSizeCap.h"
#include "support/TempDir.h"

#include <cerrno>
#include <cstring>
#include <functional>
#include <gtest/gtest.h>
#include <optional>
#include <sys/stat.h>
#include <tuple>

namespace tovrin {
namespace {

namespace fs = std::filesystem;
using nlohmann::json;
using test::entriesOf;
using test::TempDir;

std::optional<std::string> bytesOf(const fs::path& file) {
    if (!fs::exists(fs::symlink_status(file))) return std::nullopt;
    return test::readText(file);
}

std::string sample(const std::string& name) {
    return bytesOf(fs::path(TOVRIN_TEST_DATA_DIR) / "hooks" / name).value();
}

mode_t modeOf(const fs::path& file) {
    struct stat info {};
    ::stat(file.c_str(), &info);
    return info.st_mode & 07777;
}

class HookFileStoreTest : public ::testing::Test {
protected:
    TempDir m_dir;
    HookFileStore m_store;
    fs::path m_file = m_dir.path() / "settings.json";
    fs::path m_backup = m_dir.path() / "settings.json.tovrin.bak";
};

TEST_F(HookFileStoreTest, RefusesWhatItCouldNotGiveBackAndTouchesNothing) {
    const std::string notPlain =
        "settings.json is not plain JSON (it may use comments). Tovrin left it untouched.";
    const std::string deep = std::string(100000, '[') + std::string(100000, ']');
    const std::vector<std::tuple<std::string, std::string, std::string>> cases = {
        {"one space", " ", notPlain},
        {"white space only", "\n\t \n", notPlain},
        {"line comment", sample("commented-settings.json"), notPlain},
        {"block comment", "/* c */ {}", notPlain},
        {"trailing commas", sample("trailing-comma.json"), notPlain},
        {"invalid UTF-8 in a string", "{\"a\": \"\xff\xfe\"}", notPlain},
        {"two documents", "{} {}", notPlain},
        {"cut short", "{\"a\": 1", notPlain},
        {"empty array", "[]", "settings.json holds a JSON array, not an object. Tovrin left it untouched."},
        {"null", "null", "settings.json holds a JSON null, not an object. Tovrin left it untouched."},
        {"100,000 levels deep", "{\"a\": " + deep + "}",
         "settings.json nests deeper than 64 levels. Tovrin left it untouched."},
        {"an integer beyond 64 bits", R"({"id": 123456789012345678901234567890})",
         "settings.json holds the number 123456789012345678901234567890, which Tovrin could not write back "
         "exactly. Tovrin left it untouched."},
        {"a key given twice", R"({"hooks": {}, "hooks": {"Stop": []}})",
         "settings.json holds the key \"hooks\" twice in one object. Tovrin left it untouched."},
    };
    for (const auto& [name, content, refusal] : cases) {
        SCOPED_TRACE(name);
        m_dir.write("settings.json", content);
        const auto read = m_store.readObject(m_file);
        ASSERT_FALSE(read.ok());
        EXPECT_EQ(read.error(), refusal);
        EXPECT_TRUE(bytesOf(m_file) == content);
        EXPECT_EQ(entriesOf(m_dir.path()), std::vector<std::string>{"settings.json"});
    }
}

// value() throws, and so fails the test, when the read was refused.
TEST_F(HookFileStoreTest, MissingOrEmptyFileReadsAsEmptyObjectAndAByteOrderMarkIsSkipped) {
    EXPECT_FALSE(m_store.fileExists(m_file));
    EXPECT_EQ(m_store.readObject(m_file).value(), json::object());
    m_dir.write("settings.json", "");
    EXPECT_TRUE(m_store.fileExists(m_file));
    EXPECT_EQ(m_store.readObject(m_file).value(), json::object());
    m_dir.write("settings.json", "\xEF\xBB\xBF{\"b\": [1, {\"a\": null}], \"a\": \"\xC3\xA9\"}");
    EXPECT_EQ(m_store.readObject(m_file).value(), json::parse(R"({"a": "é", "b": [1, {"a": null}]})"));
}

TEST_F(HookFileStoreTest, SymbolicLinksAreRefusedAndLeftAlone) {
    const auto real = m_dir.write("dotfiles/settings.json", R"({"mine": true})");
    for (const fs::path& target : {real, m_dir.path() / "nowhere.json"}) {
        SCOPED_TRACE(target.string());
        fs::remove(m_file);
        fs::create_symlink(target, m_file);
        const std::string refusal = "settings.json is a symbolic link. Tovrin left it untouched.";

        EXPECT_TRUE(m_store.fileExists(m_file));
        const auto read = m_store.readObject(m_file);
        ASSERT_FALSE(read.ok());
        EXPECT_EQ(read.error(), refusal);
        const auto written = m_store.write(json{{"hooks", json::object()}}, m_file, true);
        ASSERT_FALSE(written.ok());
        EXPECT_EQ(written.error(), refusal);
        const auto removed = m_store.remove(m_file);
        ASSERT_FALSE(removed.ok());
        EXPECT_EQ(removed.error(), refusal);

        EXPECT_EQ(fs::read_symlink(m_file), target);
        EXPECT_EQ(bytesOf(real), R"({"mine": true})");
        EXPECT_FALSE(fs::exists(fs::symlink_status(m_backup)));
        EXPECT_FALSE(fs::exists(fs::symlink_status(m_dir.path() / "nowhere.json")));
    }
}

TEST_F(HookFileStoreTest, WriteSortsKeysAtEveryDepthAndBacksUpThePreviousFileKeepingItsMode) {
    m_dir.write("settings.json", "");
    ::chmod(m_file.c_str(), 0600);
    const auto first = json::parse(R"({"b": {"d": 1, "c": [2, {"z": 0, "a": 1}]}, "a": 1})");
    ASSERT_TRUE(m_store.write(first, m_file, true).ok());
    EXPECT_EQ(bytesOf(m_file),
              "{\n  \"a\": 1,\n  \"b\": {\n    \"c\": [\n      2,\n      {\n        \"a\": 1,\n"
              "        \"z\": 0\n      }\n    ],\n    \"d\": 1\n  }\n}\n");
    EXPECT_EQ(bytesOf(m_backup), "") << "the zero-byte file was backed up";

    const auto firstBytes = bytesOf(m_file);
    ASSERT_TRUE(m_store.write(json{{"second", true}}, m_file, true).ok());
    EXPECT_EQ(bytesOf(m_backup), firstBytes);
    EXPECT_EQ(m_store.readObject(m_file).value(), json({{"second", true}}));
    EXPECT_EQ(modeOf(m_file), 0600u);
    EXPECT_EQ(modeOf(m_backup), 0600u);
    EXPECT_EQ(entriesOf(m_dir.path()), (std::vector<std::string>{"settings.json", "settings.json.tovrin.bak",
                                                                 "settings.json.tovrin.orig"}));
}

TEST_F(HookFileStoreTest, RemoveTakesFileAndBackupAndToleratesAMissingFile) {
    m_dir.write("settings.json", "{}");
    m_dir.write("settings.json.tovrin.bak", "{}");
    ASSERT_TRUE(m_store.remove(m_file).ok());
    EXPECT_TRUE(entriesOf(m_dir.path()).empty());

    m_dir.write("settings.json.tovrin.bak", "stale");
    ASSERT_TRUE(m_store.remove(m_file).ok());
    EXPECT_TRUE(entriesOf(m_dir.path()).empty());
}

TEST_F(HookFileStoreTest, TheUsersOriginalIsKeptOnceAndNeverReplaced) {
    m_dir.write("settings.json", "{\"mine\": 1}");
    const auto original = m_dir.path() / "settings.json.tovrin.orig";
    ASSERT_TRUE(m_store.write(json{{"ours", 1}}, m_file, true).ok());
    EXPECT_EQ(bytesOf(original), "{\"mine\": 1}");
    ASSERT_TRUE(m_store.write(json{{"ours", 2}}, m_file, true).ok());
    EXPECT_EQ(bytesOf(original), "{\"mine\": 1}") << "a later write never replaces it";
    EXPECT_EQ(bytesOf(m_backup), "{\n  \"ours\": 1\n}\n");

    // A file that we create, with its folders, has no backup or temp file beside it, and a file
    // that already holds ours has no original to keep.
    const auto created = m_dir.path() / ".copilot" / "hooks" / "tovrin.json";
    ASSERT_TRUE(m_store.write(json::object(), created, true).ok());
    EXPECT_EQ(entriesOf(created.parent_path()), std::vector<std::string>{"tovrin.json"});
    ASSERT_TRUE(m_store.write(json{{"ours", 1}}, created, false).ok());
    EXPECT_FALSE(fs::exists(HookFileStore::originalPath(created)));
}

TEST_F(HookFileStoreTest, ReadOnlyFilesAndOtherKindsOfFileAreRefusedUntouched) {
    struct Case {
        const char* name;
        std::function<void(const fs::path&)> make;
        const char* refusal;
        bool readable;
    };
    const std::vector<Case> cases = {
        {"read-only for its owner", [](const fs::path& f) { ::chmod(f.c_str(), 0444); },
         "settings.json is read-only. Tovrin left it untouched.", true},
        {"a FIFO", [](const fs::path& f) { fs::remove(f), ::mkfifo(f.c_str(), 0644); },
         "settings.json is not a regular file. Tovrin left it untouched.", false},
        {"a folder", [](const fs::path& f) { fs::remove(f), fs::create_directory(f); },
         "settings.json is not a regular file. Tovrin left it untouched.", false},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        fs::remove(m_file);
        m_dir.write("settings.json", "{}");
        c.make(m_file);
        const auto status = fs::symlink_status(m_file);
        EXPECT_EQ(m_store.readObject(m_file).ok(), c.readable);
        const auto written = m_store.write(json{{"a", 1}}, m_file, true);
        ASSERT_FALSE(written.ok());
        EXPECT_EQ(written.error(), c.refusal);
        const auto removed = m_store.remove(m_file);
        ASSERT_FALSE(removed.ok());
        EXPECT_EQ(removed.error(), c.refusal);
        EXPECT_EQ(fs::symlink_status(m_file).type(), status.type());
        EXPECT_EQ(fs::symlink_status(m_file).permissions(), status.permissions());
        EXPECT_EQ(entriesOf(m_dir.path()), std::vector<std::string>{"settings.json"});
    }
}

// Writes that fail part-way: the old file must stand whole, and the backup must be either a whole
// copy of the file before this write or absent.
class HookFileStoreFailureTest : public HookFileStoreTest {
protected:
    const std::string m_before = "{\n  \"before\": true\n}\n";
    const std::string m_older = "{\"older\": 1}";

    void SetUp() override {
        m_dir.write("settings.json", m_older);
        ASSERT_TRUE(m_store.write(json{{"before", true}}, m_file, true).ok());
        ASSERT_EQ(bytesOf(m_file), m_before);
    }

    void expectFileAsBefore(const Result<void>& written) {
        EXPECT_FALSE(written.ok());
        EXPECT_FALSE(written.error().empty());
        EXPECT_EQ(bytesOf(m_file), m_before);
        for (const auto& name : entriesOf(m_dir.path()))
            EXPECT_EQ(name.find(".tmp."), std::string::npos) << "temp file left: " << name;
    }
};

TEST_F(HookFileStoreFailureTest, TextThatCannotBeEncodedTouchesNothing) {
    const auto written = m_store.write(json{{"bad", "\xff"}}, m_file, true);
    expectFileAsBefore(written);
    EXPECT_EQ(written.error(), HookFileError::unencodable(m_file));
    EXPECT_EQ(bytesOf(m_backup), m_older);
}

TEST_F(HookFileStoreFailureTest, FolderThatCannotBeCreatedChangesNothing) {
    const auto blocker = m_dir.write("blocker", "a file, not a folder");
    const auto written = m_store.write(json{{"a", 1}}, blocker / "settings.json", true);
    expectFileAsBefore(written);
    EXPECT_EQ(bytesOf(blocker), "a file, not a folder");
    EXPECT_EQ(entriesOf(m_dir.path()),
              (std::vector<std::string>{"blocker", "settings.json", "settings.json.tovrin.bak",
                                        "settings.json.tovrin.orig"}));
    EXPECT_EQ(bytesOf(m_backup), m_older);
}

// A disk that fills up mid-write.
TEST_F(HookFileStoreTest, AFailedWriteLeavesTheFileWholeAndTheBackupWholeOrAbsent) {
    struct Case {
        const char* name;
        rlim_t room;
        bool backupWritten;
    };
    for (const Case c : {Case{"no room at all", 0, false}, Case{"room for the backup only", 8192, true}}) {
        SCOPED_TRACE(c.name);
        for (const auto& name : entriesOf(m_dir.path()))
            fs::remove(m_dir.path() / name);
        ASSERT_TRUE(m_store.write(json{{"first", 1}}, m_file, false).ok());
        ASSERT_TRUE(m_store.write(json{{"second", std::string(5000, 's')}}, m_file, false).ok());
        const auto before = bytesOf(m_file);

        const auto written = [&] {
            const test::FileSizeCap cap(c.room);
            return m_store.write(json{{"third", std::string(20000, 'y')}}, m_file, false);
        }();
        ASSERT_FALSE(written.ok());
        EXPECT_NE(written.error().find(std::strerror(EFBIG)), std::string::npos) << written.error();
        // Compared without printing: the contents run to pages.
        EXPECT_TRUE(bytesOf(m_file) == before);
        const auto backupBytes = bytesOf(m_backup);
        ASSERT_EQ(backupBytes.has_value(), c.backupWritten);
        if (backupBytes) {
            EXPECT_TRUE(backupBytes == before) << "backup of " << backupBytes->size() << " bytes";
        }
        const auto expected = c.backupWritten
                                  ? std::vector<std::string>{"settings.json", "settings.json.tovrin.bak"}
                                  : std::vector<std::string>{"settings.json"};
        EXPECT_EQ(entriesOf(m_dir.path()), expected);
    }
}

} // namespace
} // namespace tovrin
