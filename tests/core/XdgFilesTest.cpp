#include "core/KeyFile.h"
#include "core/UserPaths.h"
#include "support/ScopedEnv.h"

#include <gtest/gtest.h>

namespace tovrin {
namespace {

using Paths = std::vector<std::filesystem::path>;

TEST(XdgFilesTest, DataFoldersFollowTheBaseDirectoryRules) {
    {
        test::ScopedEnv dataHome("XDG_DATA_HOME", "/x/data");
        test::ScopedEnv dataDirs("XDG_DATA_DIRS", "/a:relative::/var/lib/flatpak/exports/share");
        EXPECT_EQ(UserPaths::dataFolders(), (Paths{"/x/data", "/a", "/var/lib/flatpak/exports/share"}));
    }
    test::ScopedEnv home("HOME", "/home/t");
    test::ScopedEnv dataHome("XDG_DATA_HOME", "relative");
    test::ScopedEnv dataDirs("XDG_DATA_DIRS", "");
    EXPECT_EQ(UserPaths::applicationFolders(),
              (Paths{"/home/t/.local/share/applications", "/usr/local/share/applications",
                     "/usr/share/applications"}));
}

TEST(XdgFilesTest, AGroupIsReadAsTheDesktopReadsIt) {
    const auto entry = [](std::string_view text) { return KeyFile::group(text, "Desktop Entry"); };
    EXPECT_EQ(entry("[Desktop Entry]\nName=Code\nIcon=vscode\n"),
              (KeyFile::Group{{"Icon", "vscode"}, {"Name", "Code"}}));
    // Blanks around "=", CRLF lines, localized keys kept apart, the last repeated key wins.
    EXPECT_EQ(entry("[Desktop Entry]\r\nIcon[de]=x\r\nIcon = /opt/app/icon.png \r\nIcon=late\n"),
              (KeyFile::Group{{"Icon", "late"}, {"Icon[de]", "x"}}));
    // Other groups, comments and lines without "=" are skipped; a group name must match whole.
    EXPECT_EQ(entry("[Desktop Action new]\nIcon=other\n[Desktop Entry]\n# Icon=no\nnoise\nName=A\n"
                    "[Desktop Entry Extra]\nType=Link\n"),
              (KeyFile::Group{{"Name", "A"}}));
    EXPECT_TRUE(entry("Name=before any group\n").empty());
}

TEST(XdgFilesTest, BooleansTakeTheNumericFormsToo) {
    EXPECT_EQ(KeyFile::boolean("true"), true);
    EXPECT_EQ(KeyFile::boolean("1"), true);
    EXPECT_EQ(KeyFile::boolean("false"), false);
    EXPECT_EQ(KeyFile::boolean("0"), false);
    EXPECT_EQ(KeyFile::boolean("yes"), std::nullopt);
    EXPECT_EQ(KeyFile::value({{"Hidden", "true"}}, "Hidden"), "true");
    EXPECT_EQ(KeyFile::value({}, "Hidden"), std::nullopt);
}

} // namespace
} // namespace tovrin
