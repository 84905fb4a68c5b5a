#include "core/AtomicFile.h"
#include "core/JsonFileDefaultsStore.h"
#include "support/TempDir.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

namespace tovrin {
namespace {

namespace fs = std::filesystem;
using nlohmann::json;

TEST(JsonFileDefaultsStore, ValuesKeepTheirJsonTypeAcrossAReload) {
    test::TempDir dir;
    const auto file = dir.path() / "defaults.json";
    {
        JsonFileDefaultsStore store(file);
        store.set("int", 45);
        store.set("wholeDouble", 100.0);
        store.set("double", 55.5);
        store.set("bool", false);
        store.set("string", "custom:ping.wav");
        store.set("array", json::array({"codex-cli", "cursor-ide"}));
        store.set("gone", 1);
        store.remove("gone");
    }
    const JsonFileDefaultsStore reloaded(file);
    const auto get = [&](const char* key) { return reloaded.object(key).value_or(json()); };
    EXPECT_TRUE(get("int").is_number_integer());
    EXPECT_EQ(get("int"), 45);
    EXPECT_TRUE(get("wholeDouble").is_number_float());
    EXPECT_EQ(get("wholeDouble"), 100.0);
    EXPECT_EQ(get("double"), 55.5);
    EXPECT_EQ(get("bool"), json(false));
    EXPECT_EQ(get("string"), "custom:ping.wav");
    EXPECT_EQ(get("array"), json::array({"codex-cli", "cursor-ide"}));
    EXPECT_FALSE(reloaded.object("gone"));
    EXPECT_FALSE(reloaded.object("never"));
}

TEST(JsonFileDefaultsStore, WritesOnlyTheFilePrivateToTheUserAndCreatesItsFolder) {
    test::TempDir dir;
    const auto file = dir.path() / "config" / "tovrin" / "defaults.json";
    JsonFileDefaultsStore store(file);
    EXPECT_FALSE(fs::exists(file)) << "loading must not create the file";

    store.set("ttlSeconds", 60);
    store.set("ttlSeconds", 90);
    EXPECT_EQ(test::entriesOf(file.parent_path()), std::vector<std::string>{"defaults.json"});
    struct stat info {};
    ASSERT_EQ(::stat(file.c_str(), &info), 0);
    EXPECT_EQ(info.st_mode & 0777, 0600u);
}

TEST(JsonFileDefaultsStore, AnUnreadableFileReadsAsEmptyAndIsKeptAsideAtTheFirstWrite) {
    for (const std::string corrupt : {"{\"ttlSeconds\": 60,", "[1, 2, 3]", " "}) {
        SCOPED_TRACE("content: " + corrupt);
        test::TempDir dir;
        const auto file = dir.write("defaults.json", corrupt);

        JsonFileDefaultsStore store(file);
        EXPECT_FALSE(store.object("ttlSeconds"));
        EXPECT_EQ(readWholeFile(file).value(), corrupt) << "reading alone must not touch the file";

        store.set("soundEnabled", false);
        store.set("telegramEnabled", true); // the second write must not overwrite what was kept
        EXPECT_EQ(readWholeFile(dir.path() / "defaults.json.corrupt").value(), corrupt);
        const auto rewritten = json::parse(readWholeFile(file).value());
        EXPECT_EQ(rewritten, (json{{"soundEnabled", false}, {"telegramEnabled", true}}));
    }
}

TEST(JsonFileDefaultsStore, AFolderThatCannotBeMadeKeepsTheValueInMemory) {
    test::TempDir dir;
    // A regular file where the folder should be: fails for root too.
    const auto blocker = dir.write("config", "not a folder");
    JsonFileDefaultsStore store(blocker / "defaults.json");
    store.set("ttlSeconds", 120);
    EXPECT_EQ(store.object("ttlSeconds"), json(120));
    EXPECT_EQ(readWholeFile(blocker).value(), "not a folder");
    EXPECT_EQ(test::entriesOf(dir.path()), std::vector<std::string>{"config"});
}

} // namespace
} // namespace tovrin
