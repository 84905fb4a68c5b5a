#include "hooks/AdapterResources.h"

#include "support/TempDir.h"

#include <gtest/gtest.h>
#include <map>

namespace tovrin {
namespace {

namespace fs = std::filesystem;

AdapterResources::Environment environment(std::map<std::string, std::string> values) {
    return [values = std::move(values)](const char* name) -> std::optional<std::string> {
        if (auto it = values.find(name); it != values.end()) return it->second;
        return std::nullopt;
    };
}

TEST(AdapterResources, TheVariableWinsUncheckedAndAnEmptyOneCountsAsUnset) {
    test::TempDir share;
    fs::create_directories(share.path() / "Adapters");

    auto found =
        AdapterResources::locate(share.path(), environment({{"TOVRIN_ADAPTERS_DIR", "/no/such/dir"}}));
    ASSERT_TRUE(found);
    EXPECT_EQ(found->root, "/no/such/dir");

    found = AdapterResources::locate(
        share.path(), environment({{"TOVRIN_ADAPTERS_DIR", "~/payload"}, {"HOME", "/home/someone"}}));
    ASSERT_TRUE(found);
    EXPECT_EQ(found->root, "/home/someone/payload");

    found = AdapterResources::locate(share.path(), environment({{"TOVRIN_ADAPTERS_DIR", ""}}));
    ASSERT_TRUE(found);
    EXPECT_EQ(found->root, share.path() / "Adapters");
}

TEST(AdapterResources, WithoutTheVariableThePayloadFolderMustExist) {
    test::TempDir share;
    EXPECT_FALSE(AdapterResources::locate(share.path(), environment({})));
    EXPECT_FALSE(AdapterResources::locate(std::nullopt, environment({})));
}

} // namespace
} // namespace tovrin
