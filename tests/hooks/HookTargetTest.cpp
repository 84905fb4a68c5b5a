#include "hooks/HookTarget.h"

#include <algorithm>
#include <gtest/gtest.h>

namespace tovrin {
namespace {

namespace fs = std::filesystem;

TEST(HookTarget, PathsFollowTheHomeAndNothingElseDiffers) {
    const fs::path homeA = "/home/dev";
    const fs::path homeB = "/srv/users/other person";
    const auto a = HookTarget::all(homeA);
    const auto b = HookTarget::all(homeB);
    ASSERT_EQ(a.size(), b.size());
    for (std::size_t i = 0; i < a.size(); ++i) {
        SCOPED_TRACE(a[i].id);
        EXPECT_EQ(a[i].configPath.lexically_relative(homeA), b[i].configPath.lexically_relative(homeB));
        EXPECT_EQ(a[i].detectionPath.has_value(), b[i].detectionPath.has_value());
        if (a[i].detectionPath) {
            EXPECT_EQ(a[i].detectionPath->lexically_relative(homeA),
                      b[i].detectionPath->lexically_relative(homeB));
            EXPECT_NE(*a[i].configPath.lexically_relative(*a[i].detectionPath).begin(), fs::path(".."))
                << "the config file lies inside the folder that tells the agent is there";
        }
        EXPECT_EQ(a[i].id, b[i].id);
        EXPECT_EQ(a[i].displayName, b[i].displayName);
        EXPECT_EQ(a[i].templateName, b[i].templateName);
        EXPECT_EQ(a[i].strategy, b[i].strategy);
        EXPECT_EQ(a[i].isDefault, b[i].isDefault);
        EXPECT_EQ(a[i].note, b[i].note);
    }
}

TEST(HookTarget, EqualityIsByIdOnly) {
    const auto targets = HookTarget::all("/home/dev");
    auto renamed = targets[0];
    renamed.note = "another note";
    renamed.displayName = "Another name";
    renamed.configPath = "/elsewhere/settings.json";
    EXPECT_EQ(renamed, targets[0]);
    EXPECT_NE(targets[0], targets[1]);
    for (std::size_t i = 0; i < targets.size(); ++i) {
        EXPECT_EQ(std::count(targets.begin(), targets.end(), targets[i]), 1)
            << targets[i].id << " is not unique";
    }
}

} // namespace
} // namespace tovrin
