#include "services/update/UpdateChoice.h"

#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace tovrin {
namespace {

AppcastItem release(std::string version) {
    return {.version = version,
            .shortVersion = "v" + version,
            .notes = {},
            .url = "http://127.0.0.1/" + version + ".tar.gz",
            .length = 100,
            .signature = "c2lnbmF0dXJl"};
}

TEST(UpdateChoiceTest, VersionsCompareAsNumbersPartByPart) {
    const std::vector<std::tuple<const char*, const char*, bool>> rows = {
        {"10", "9", true},       {"9", "10", false},         {"57", "57", false},
        {"1.10", "1.9", true},   {"1.4.2.1", "1.4.2", true}, {"1.4.0", "1.4", false},
        {"2", "1.99", true},     {"", "1", false},           {"1.", "1", false},
        {"1a", "1", false},      {"-2", "1", false},         {"99999999999999999999", "1", false},
        {"2", "build 1", false},
    };
    for (const auto& [candidate, current, newer] : rows)
        EXPECT_EQ(isNewerVersion(candidate, current), newer) << candidate << " against " << current;
}

TEST(UpdateChoiceTest, OffersTheNewestCompleteReleaseAboveTheBuildAndTheSkippedVersion) {
    AppcastItem unsigned61 = release("61");
    unsigned61.signature.clear();
    AppcastItem noLength62 = release("62");
    noLength62.length.reset();
    AppcastItem noUrl63 = release("63");
    noUrl63.url.clear();

    struct Row {
        const char* name;
        std::vector<AppcastItem> items;
        const char* skipped;
        std::optional<std::string> offered;
    };
    const std::vector<Row> rows = {
        {"the newest wins, wherever it stands", {release("58"), release("60"), release("59")}, "", "60"},
        {"nothing above the build", {release("57"), release("12")}, "", std::nullopt},
        {"incomplete items are passed over", {release("58"), unsigned61, noLength62, noUrl63}, "", "58"},
        {"a skipped version and those below it stay hidden",
         {release("59"), release("60")},
         "60",
         std::nullopt},
        {"a release above the skipped one is offered", {release("59"), release("61")}, "60", "61"},
        {"a skipped version that is no version hides nothing", {release("58")}, "junk", "58"},
        {"items whose version is no version are passed over", {release("beta"), release("58")}, "", "58"},
        {"an empty feed", {}, "", std::nullopt},
    };
    for (const Row& row : rows) {
        const auto offered = newestApplicable(row.items, "57", row.skipped);
        EXPECT_EQ(offered ? std::optional(offered->version) : std::nullopt, row.offered) << row.name;
    }
}

} // namespace
} // namespace tovrin
