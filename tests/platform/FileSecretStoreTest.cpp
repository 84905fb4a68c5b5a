#include "platform/secrets/FileSecretStore.h"

#include "platform/secrets/SecretStoreFactory.h"
#include "support/ScopedEnv.h"
#include "support/TempDir.h"

#include <fstream>
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>
#include <sys/stat.h>

namespace tovrin {
namespace {

namespace fs = std::filesystem;
const std::string token = TelegramSecretKeys::botToken;
const std::string chat = TelegramSecretKeys::chatID;

mode_t modeOf(const fs::path& path) {
    struct stat info {};
    EXPECT_EQ(::stat(path.c_str(), &info), 0) << path;
    return info.st_mode & 0777;
}

class FileSecretStoreTest : public ::testing::Test {
protected:
    test::TempDir dir;
    fs::path file = dir.path() / "config/tovrin/secrets.json";
    FileSecretStore store{file};
};

// Only the owner can ever read the file: made private whatever the umask, and each write replaces
// it with a private one.
TEST_F(FileSecretStoreTest, KeepsValuesPerKeyPrivatelyAndAnEmptyValueRemoves) {
    EXPECT_FALSE(store.string(token));
    const mode_t previous = ::umask(0);
    store.set("123:ABC", token);
    ::umask(previous);
    EXPECT_EQ(modeOf(file), 0600u);
    EXPECT_EQ(modeOf(file.parent_path()), 0700u);
    ::chmod(file.c_str(), 0644);
    store.set("-1001", chat);
    EXPECT_EQ(modeOf(file), 0600u);
    EXPECT_EQ(test::entriesOf(file.parent_path()), std::vector<std::string>{"secrets.json"});

    store.set("456:DEF", token);
    EXPECT_EQ(store.string(token), "456:DEF");
    EXPECT_EQ(FileSecretStore(file).string(chat), "-1001") << "another instance reads the same file";

    store.set("", token);
    EXPECT_FALSE(store.string(token));
    store.set(std::nullopt, chat);
    EXPECT_FALSE(store.string(chat));
    EXPECT_EQ(nlohmann::json::parse(std::ifstream(file)), nlohmann::json::object());
}

TEST_F(FileSecretStoreTest, RemovingFromNothingWritesNothing) {
    store.set("", token);
    EXPECT_FALSE(fs::exists(file.parent_path()));
}

TEST_F(FileSecretStoreTest, AMalformedFileReadsAsEmptyAndIsReplacedOnTheNextWrite) {
    for (const char* content : {"{not json", "[\"a\"]", R"({"telegram.botToken": 5})"}) {
        SCOPED_TRACE(content);
        dir.write("config/tovrin/secrets.json", content);
        EXPECT_FALSE(store.string(token));
        store.set("-1001", chat);
        EXPECT_EQ(store.string(chat), "-1001");
        EXPECT_FALSE(store.string(token));
    }
}

// With no session bus to ask, the private file is chosen and the user is told where it is.
TEST(SecretStoreFactoryTest, FallsBackToThePrivateFileWhenNoSecretServiceAnswers) {
    test::TempDir dir;
    const test::ScopedEnv noBus("DBUS_SESSION_BUS_ADDRESS", "unix:path=" + (dir.path() / "no-bus").string());
    EXPECT_FALSE(secretServiceAnswers(Seconds(2)));
    const auto chosen = chooseSecretStore("com.tovrin.test", dir.path() / "secrets.json");

    ASSERT_TRUE(chosen.usesFallback());
    EXPECT_EQ(chosen.fallbackFile, dir.path() / "secrets.json");
    EXPECT_NE(chosen.notice().find((dir.path() / "secrets.json").string()), std::string::npos)
        << chosen.notice();
    chosen.store->set("123:ABC", token);
    EXPECT_EQ(FileSecretStore(dir.path() / "secrets.json").string(token), "123:ABC");
}

} // namespace
} // namespace tovrin
