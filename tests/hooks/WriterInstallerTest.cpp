#include "hooks/WriterInstaller.h"

#include "support/SamplePayload.h"
#include "support/TempDir.h"

#include <chrono>
#include <gtest/gtest.h>
#include <sys/stat.h>

namespace tovrin {
namespace {

namespace fs = std::filesystem;

class WriterInstallerTest : public ::testing::Test {
protected:
    WriterInstallerTest()
        : installer(WriterInstaller::forHome(dir.path() / "home",
                                             test::writeSamplePayload(dir.path() / "Adapters"))) {}

    // Marks the installed copy so that a later copy can be told from leaving it alone.
    void markInstalledCopy() const {
        dir.write("home/.tovrin/agent-status.sh", "edited by the user");
        fs::last_write_time(installer.destination, fs::file_time_type::clock::now() - std::chrono::hours(24));
    }
    bool installedCopyIsMarked() const {
        return test::readText(installer.destination) == "edited by the user";
    }

    test::TempDir dir;
    WriterInstaller installer;
};

TEST_F(WriterInstallerTest, StalenessFollowsTheWriterAndTheExactStampedVersion) {
    struct Case {
        const char* name;
        bool writer;
        std::optional<std::string> stamp;
        bool stale;
    };
    const Case cases[] = {
        {"current", true, "1.2 (3)", false},
        {"stamp with a line end", true, "1.2 (3)\n", false},
        {"stamp padded with white space", true, " \t1.2 (3) \r\n", false},
        {"no writer", false, "1.2 (3)", true},
        {"no stamp", true, std::nullopt, true},
        {"other build", true, "1.2 (4)", true},
        {"older version", true, "1.1 (3)", true},
        {"version only", true, "1.2", true},
        {"stamp not UTF-8", true, "1.2 (3)\xff", true},
        {"empty stamp", true, "", true},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        fs::remove_all(dir.path() / "home");
        if (c.writer) dir.write("home/.tovrin/agent-status.sh", "x");
        if (c.stamp) dir.write("home/.tovrin/.writer-version", *c.stamp);
        EXPECT_EQ(installer.isStale("1.2 (3)"), c.stale);
    }
}

TEST_F(WriterInstallerTest, InstallsAnExecutableCopyAndStampsItOnce) {
    const auto installed = installer.ensureInstalled("1.2 (3)");
    ASSERT_TRUE(installed) << installed.error();
    EXPECT_EQ(installed.value(), dir.path() / "home/.tovrin/agent-status.sh");
    EXPECT_EQ(test::readText(installer.destination), test::sampleWriter);
    struct stat info {};
    ASSERT_EQ(::stat(installer.destination.c_str(), &info), 0);
    EXPECT_EQ(info.st_mode & 07777, 0755u);
    EXPECT_EQ(test::readText(installer.stamp), "1.2 (3)");
    EXPECT_EQ(test::entriesOf(dir.path() / "home/.tovrin"),
              (std::vector<std::string>{".writer-version", "agent-status.sh"}));

    fs::last_write_time(installer.destination, fs::file_time_type::clock::now() - std::chrono::hours(24));
    const auto before = fs::last_write_time(installer.destination);
    ASSERT_TRUE(installer.ensureInstalled("1.2 (3)"));
    EXPECT_EQ(fs::last_write_time(installer.destination), before);
}

TEST_F(WriterInstallerTest, CopiesAgainWhenWriterOrStampIsGoneOrTheVersionChangesButNeverWithoutThePayload) {
    ASSERT_TRUE(installer.ensureInstalled("2.0 (7)"));

    markInstalledCopy();
    ASSERT_TRUE(installer.ensureInstalled("2.0 (7)"));
    EXPECT_TRUE(installedCopyIsMarked()) << "the user's edits stay while the version does";

    fs::remove(installer.stamp);
    ASSERT_TRUE(installer.ensureInstalled("2.0 (7)"));
    EXPECT_EQ(test::readText(installer.destination), test::sampleWriter);
    EXPECT_EQ(test::readText(installer.stamp), "2.0 (7)");

    markInstalledCopy();
    ASSERT_TRUE(installer.ensureInstalled("1.9 (8)"));
    EXPECT_EQ(test::readText(installer.destination), test::sampleWriter) << "a downgrade copies too";
    EXPECT_EQ(test::readText(installer.stamp), "1.9 (8)");

    fs::remove(installer.destination);
    ASSERT_TRUE(installer.ensureInstalled("1.9 (8)"));
    EXPECT_EQ(test::readText(installer.destination), test::sampleWriter);

    // Without the writer in the payload nothing can be copied, and the installed one is not enough.
    fs::remove(dir.path() / "Adapters/agent-status.sh");
    for (const char* version : {"1.9 (8)", "2.0 (9)"}) {
        const auto result = installer.ensureInstalled(version);
        ASSERT_FALSE(result);
        EXPECT_EQ(result.error(), AdapterResources::payloadMissingMessage());
    }
    EXPECT_EQ(test::readText(installer.destination), test::sampleWriter);
}

TEST_F(WriterInstallerTest, AFolderThatCannotBeMadeFailsWithText) {
    dir.write("home/.tovrin", "a file where the folder should be");
    const auto result = installer.ensureInstalled("1 (1)");
    ASSERT_FALSE(result);
    EXPECT_NE(result.error().find(".tovrin"), std::string::npos) << result.error();
}

TEST_F(WriterInstallerTest, RemoveInstalledLeavesTheFolder) {
    EXPECT_TRUE(installer.removeInstalled()) << "nothing installed is no failure";
    ASSERT_TRUE(installer.ensureInstalled("1 (1)"));
    dir.write("home/.tovrin/vscode-hooks.json", "{}");
    ASSERT_TRUE(installer.removeInstalled());
    EXPECT_EQ(test::entriesOf(dir.path() / "home/.tovrin"), std::vector<std::string>{"vscode-hooks.json"});
}

} // namespace
} // namespace tovrin
