#include "hooks/HookFileStore.h"

#include "hooks/HookFileError.h"
#include "support/TempDir.h"

#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <fstream>
#include <gtest/gtest.h>
#include <optional>
#include <sstream>
#include <sys/mount.h>
#include <sys/stat.h>
#include <unistd.h>

namespace tovrin {
namespace {

namespace fs = std::filesystem;
using nlohmann::json;
using test::entriesOf;
using test::TempDir;

std::optional<std::string> bytesOf(const fs::path& file) {
    if (!fs::exists(fs::symlink_status(file))) return std::nullopt;
    std::ifstream in(file, std::ios::binary);
    std::stringstream content;
    content << in.rdbuf();
    return content.str();
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

TEST_F(HookFileStoreTest, RefusesAnythingButAStrictObjectAndTouchesNothing) {
    const std::vector<std::pair<std::string, std::string>> cases = {
        {"one space", " "},
        {"white space only", "\n\t \n"},
        {"line comment", sample("commented-settings.json")},
        {"block comment", "/* c */ {}"},
        {"trailing commas", sample("trailing-comma.json")},
        {"empty array", "[]"},
        {"number", "42"},
        {"string", "\"text\""},
        {"null", "null"},
        {"invalid UTF-8 in a string", "{\"a\": \"\xff\xfe\"}"},
        {"cut UTF-8 sequence", "{\"a\": \"\xe2\x82\"}"},
        {"two documents", "{} {}"},
        {"cut short", "{\"a\": 1"},
    };
    for (const auto& [name, content] : cases) {
        SCOPED_TRACE(name);
        m_dir.write("settings.json", content);
        const auto read = m_store.readObject(m_file);
        ASSERT_FALSE(read.ok());
        EXPECT_EQ(read.error(),
                  "settings.json is not plain JSON (it may use comments). Tovrin left it untouched.");
        EXPECT_EQ(bytesOf(m_file), content);
        EXPECT_EQ(entriesOf(m_dir.path()), std::vector<std::string>{"settings.json"});
    }
}

TEST_F(HookFileStoreTest, MissingOrEmptyFileReadsAsEmptyObject) {
    EXPECT_FALSE(m_store.fileExists(m_file));
    ASSERT_TRUE(m_store.readObject(m_file).ok());
    EXPECT_EQ(m_store.readObject(m_file).value(), json::object());

    m_dir.write("settings.json", "");
    EXPECT_TRUE(m_store.fileExists(m_file));
    ASSERT_TRUE(m_store.readObject(m_file).ok());
    EXPECT_EQ(m_store.readObject(m_file).value(), json::object());

    m_dir.write("settings.json", "\xEF\xBB\xBF{\"b\": [1, {\"a\": null}], \"a\": \"\xC3\xA9\"}");
    ASSERT_TRUE(m_store.readObject(m_file).ok());
    EXPECT_EQ(m_store.readObject(m_file).value(), json::parse(R"({"a": "é", "b": [1, {"a": null}]})"));
}

TEST_F(HookFileStoreTest, PlatformErrorsOnReadPassThrough) {
    fs::create_directory(m_file);
    const auto read = m_store.readObject(m_file);
    ASSERT_FALSE(read.ok());
    EXPECT_NE(read.error(), HookFileError::unreadableJSON(m_file));
    EXPECT_NE(read.error().find(m_file.string()), std::string::npos) << read.error();
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
        const auto written = m_store.write(json{{"hooks", json::object()}}, m_file);
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

TEST_F(HookFileStoreTest, WriteSortsKeysAtEveryDepthAndBacksUpThePreviousFile) {
    m_dir.write("settings.json", "");
    const auto first = json::parse(R"({"b": {"d": 1, "c": [2, {"z": 0, "a": 1}]}, "a": 1})");
    ASSERT_TRUE(m_store.write(first, m_file).ok());
    EXPECT_EQ(bytesOf(m_file),
              "{\n  \"a\": 1,\n  \"b\": {\n    \"c\": [\n      2,\n      {\n        \"a\": 1,\n"
              "        \"z\": 0\n      }\n    ],\n    \"d\": 1\n  }\n}\n");
    EXPECT_EQ(bytesOf(m_backup), "") << "the zero-byte file was backed up";

    const auto firstBytes = bytesOf(m_file);
    ASSERT_TRUE(m_store.write(json{{"second", true}}, m_file).ok());
    EXPECT_EQ(bytesOf(m_backup), firstBytes);
    ASSERT_TRUE(m_store.readObject(m_file).ok());
    EXPECT_EQ(m_store.readObject(m_file).value(), json({{"second", true}}));
    EXPECT_EQ(entriesOf(m_dir.path()),
              (std::vector<std::string>{"settings.json", "settings.json.tovrin.bak"}));
}

TEST_F(HookFileStoreTest, WriteCreatesMissingFoldersWithoutBackupOrTempFile) {
    const auto file = m_dir.path() / ".copilot" / "hooks" / "tovrin.json";
    ASSERT_TRUE(m_store.write(json{{"version", 1}}, file).ok());
    EXPECT_EQ(entriesOf(file.parent_path()), std::vector<std::string>{"tovrin.json"});
    EXPECT_EQ(m_store.readObject(file).value(), json({{"version", 1}}));
}

TEST_F(HookFileStoreTest, WriteKeepsThePermissionsOfAPrivateFile) {
    m_dir.write("settings.json", "{}");
    ::chmod(m_file.c_str(), 0600);
    ASSERT_TRUE(m_store.write(json{{"a", 1}}, m_file).ok());
    EXPECT_EQ(modeOf(m_file), 0600u);
    EXPECT_EQ(modeOf(m_backup), 0600u);
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

TEST(HookFileError, TextsNameOnlyTheFile) {
    EXPECT_EQ(HookFileError::unreadableJSON("/x/settings.json"),
              "settings.json is not plain JSON (it may use comments). Tovrin left it untouched.");
    EXPECT_EQ(HookFileError::symbolicLink("/home/u/.codex/hooks.json"),
              "hooks.json is a symbolic link. Tovrin left it untouched.");
}

// Writes that fail part-way: the old file must stand whole, and the backup must be either a whole
// copy of the file before this write or absent.
class HookFileStoreFailureTest : public HookFileStoreTest {
protected:
    const std::string m_before = "{\n  \"before\": true\n}\n";
    const std::string m_older = "{\"older\": 1}";

    void SetUp() override {
        m_dir.write("settings.json", m_older);
        ASSERT_TRUE(m_store.write(json{{"before", true}}, m_file).ok());
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

TEST_F(HookFileStoreFailureTest, TextThatCannotBeEncodedRefreshesOnlyTheBackup) {
    const auto written = m_store.write(json{{"bad", "\xff"}}, m_file);
    expectFileAsBefore(written);
    EXPECT_EQ(written.error(), HookFileError::unencodable(m_file));
    EXPECT_EQ(bytesOf(m_backup), m_before);
}

TEST_F(HookFileStoreFailureTest, FolderThatCannotBeCreatedChangesNothing) {
    const auto blocker = m_dir.write("blocker", "a file, not a folder");
    const auto written = m_store.write(json{{"a", 1}}, blocker / "settings.json");
    expectFileAsBefore(written);
    EXPECT_EQ(bytesOf(blocker), "a file, not a folder");
    EXPECT_EQ(entriesOf(m_dir.path()),
              (std::vector<std::string>{"blocker", "settings.json", "settings.json.tovrin.bak"}));
    EXPECT_EQ(bytesOf(m_backup), m_older);
}

TEST_F(HookFileStoreFailureTest, TargetThatIsAFolderStaysAndGetsNoBackup) {
    const auto folder = m_dir.path() / "folder.json";
    m_dir.write("folder.json/keep", "kept");
    m_dir.write("folder.json.tovrin.bak", "stale");
    const auto written = m_store.write(json{{"a", 1}}, folder);
    expectFileAsBefore(written);
    EXPECT_EQ(entriesOf(folder), std::vector<std::string>{"keep"});
    EXPECT_EQ(bytesOf(folder / "keep"), "kept");
    EXPECT_EQ(bytesOf(m_dir.path() / "folder.json.tovrin.bak"), std::nullopt)
        << "the old backup is dropped: it no longer holds what stood there before this write";
}

// A tmpfs small enough to fill up; skipped where mounting is not allowed.
class HookFileStoreDiskFullTest : public ::testing::Test {
protected:
    void SetUp() override {
        m_mount = m_dir.path() / "small";
        fs::create_directory(m_mount);
        if (::mount("tmpfs", m_mount.c_str(), "tmpfs", 0, "size=64k") != 0)
            GTEST_SKIP() << "cannot mount a tmpfs: " << std::strerror(errno);
        m_mounted = true;
    }
    void TearDown() override {
        if (m_mounted) ::umount(m_mount.c_str());
    }

    // Fills the file system, then gives back `pages` pages of 4 KiB.
    void fillLeaving(int pages) {
        const auto filler = m_mount / "filler";
        const int fd = ::open(filler.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0644);
        ASSERT_GE(fd, 0);
        const std::string page(4096, 'x');
        off_t size = 0;
        while (::write(fd, page.data(), page.size()) == static_cast<ssize_t>(page.size()))
            size += 4096;
        ASSERT_EQ(::ftruncate(fd, size - 4096 * pages), 0);
        ::close(fd);
    }

    TempDir m_dir;
    fs::path m_mount;
    bool m_mounted = false;
    HookFileStore m_store;
};

TEST_F(HookFileStoreDiskFullTest, FullDiskLeavesTheFileWholeAndTheBackupWholeOrAbsent) {
    struct Case {
        const char* name;
        int freePages;
        bool backupWritten;
    };
    for (const Case c : {Case{"no room at all", 0, false}, Case{"room for the backup only", 1, true}}) {
        SCOPED_TRACE(c.name);
        const auto file = m_mount / "settings.json";
        const auto backup = m_mount / "settings.json.tovrin.bak";
        for (const auto& name : entriesOf(m_mount))
            fs::remove(m_mount / name);
        ASSERT_TRUE(m_store.write(json{{"first", 1}}, file).ok());
        // Two pages, so that dropping the one-page old backup does not make room for the new one.
        ASSERT_TRUE(m_store.write(json{{"second", std::string(5000, 's')}}, file).ok());
        const auto before = bytesOf(file);
        fillLeaving(c.freePages);

        const auto written = m_store.write(json{{"third", std::string(20000, 'y')}}, file);
        ASSERT_FALSE(written.ok());
        EXPECT_NE(written.error().find(std::strerror(ENOSPC)), std::string::npos) << written.error();
        // Compared without printing: the contents run to pages.
        EXPECT_TRUE(bytesOf(file) == before);
        const auto backupBytes = bytesOf(backup);
        ASSERT_EQ(backupBytes.has_value(), c.backupWritten);
        if (backupBytes) {
            EXPECT_TRUE(backupBytes == before) << "backup of " << backupBytes->size() << " bytes";
        }
        const auto expected =
            c.backupWritten ? std::vector<std::string>{"filler", "settings.json", "settings.json.tovrin.bak"}
                            : std::vector<std::string>{"filler", "settings.json"};
        EXPECT_EQ(entriesOf(m_mount), expected);
    }
}

} // namespace
} // namespace tovrin
