#include "ui/viewmodels/AboutContent.h"

#include <gtest/gtest.h>

namespace tovrin {
namespace {

using namespace AboutContent;

TEST(AboutContentTest, VersionLineFillsInWhatTheBuildLeavesOut) {
    EXPECT_EQ(versionLine("1.4.2", "57"), "Version 1.4.2 (57)");
    EXPECT_EQ(versionLine("1.4.2", ""), "Version 1.4.2 (1)");
    EXPECT_EQ(versionLine("", ""), "Version 1.0 (1)");
}

TEST(AboutContentTest, TheSiteShowsAsItsHostAndOpensOverHttps) {
    EXPECT_EQ(websiteName("tovrin.app"), "tovrin.app");
    EXPECT_EQ(websiteName("https://tovrin.app/"), "tovrin.app");
    EXPECT_EQ(websiteAddress("tovrin.app"), "https://tovrin.app");
    EXPECT_EQ(websiteAddress("http://intranet.example/tovrin"), "http://intranet.example/tovrin");
    EXPECT_EQ(websiteAddress(""), "");
    EXPECT_EQ(websiteAddress("https://"), "");
}

} // namespace
} // namespace tovrin
