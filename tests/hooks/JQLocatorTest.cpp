#include "hooks/JQLocator.h"

#include "support/TempDir.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

namespace tovrin {
namespace {

namespace fs = std::filesystem;
using Availability = JQLocator::Availability;

class JQLocatorTest : public ::testing::Test {
protected:
    fs::path jq(const std::string& name, mode_t mode) const {
        const auto file = dir.write(name + "/jq", "#!/bin/sh\n");
        ::chmod(file.c_str(), mode);
        return file;
    }
    test::TempDir dir;
};

TEST_F(JQLocatorTest, TakesTheFirstExecutableFileInOrder) {
    const auto absent = dir.path() / "absent/jq";
    const auto plain = jq("plain", 0644);
    const auto folder = dir.path() / "folder/jq";
    fs::create_directories(folder);
    ::chmod(folder.c_str(), 0755);
    const auto first = jq("first", 0755);
    const auto second = jq("second", 0700);

    EXPECT_EQ(JQLocator({absent, plain, folder, first, second}, second).locate(),
              Availability::userInstalled(first.string()));
    EXPECT_EQ(JQLocator({absent, plain, second, first}, second).locate(),
              Availability::system(second.string()));
    EXPECT_EQ(JQLocator({plain, first}, plain).locate(), Availability::userInstalled(first.string()))
        << "a system path that isn't executable is passed over";
    EXPECT_EQ(JQLocator({absent, plain, folder}, absent).locate(), Availability::missing());
}

TEST(JQLocatorPaths, SystemFirstThenTheUsualUserPlaces) {
    const JQLocator locator("/home/dev");
    EXPECT_EQ(locator.searchPaths(),
              (std::vector<fs::path>{"/usr/bin/jq", "/usr/local/bin/jq", "/home/dev/.local/bin/jq",
                                     "/home/linuxbrew/.linuxbrew/bin/jq"}));
}

} // namespace
} // namespace tovrin
