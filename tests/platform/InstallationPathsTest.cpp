#include "platform/linux/InstallationPaths.h"

#include <gtest/gtest.h>

namespace tovrin {
namespace {

// The test programs lie two levels below the build folder, like bin/tovrin, so they find the
// payload copy that the build puts beside them.
TEST(InstallationPaths, ShareDirIsBesideTheExecutablesFolder) {
    const auto share = InstallationPaths::shareDir();
    ASSERT_TRUE(share);
    EXPECT_EQ(*share, std::filesystem::path(TOVRIN_BUILD_SHARE_DIR).lexically_normal());
}

} // namespace
} // namespace tovrin
