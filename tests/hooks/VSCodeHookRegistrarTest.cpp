#include "hooks/VSCodeHookRegistrar.h"

#include "hooks/HookFileStore.h"
#include "support/TempDir.h"

#include <gtest/gtest.h>

namespace tovrin {
namespace {

namespace fs = std::filesystem;
using nlohmann::json;

class VSCodeHookRegistrarTest : public ::testing::Test {
protected:
    fs::path settings(const std::string& editor) const {
        return home.path() / ".config" / editor / "User/settings.json";
    }
    void installEditor(const std::string& editor) const {
        fs::create_directories(settings(editor).parent_path());
    }
    fs::path put(const std::string& editor, const std::string& content) const {
        return home.write(".config/" + editor + "/User/settings.json", content);
    }
    json read(const std::string& editor) const { return json::parse(test::readText(settings(editor))); }

    test::TempDir home;
    VSCodeHookRegistrar registrar{home.path(), std::make_shared<HookFileStore>()};
};

const json kRegistered = {{"~/.claude/settings.json", false}, {"~/.tovrin/vscode-hooks.json", true}};

TEST_F(VSCodeHookRegistrarTest, RegisterCreatesTheSettingOnlyForInstalledEditors) {
    fs::create_directories(home.path() / ".config/Code"); // a folder without User is no editor
    EXPECT_FALSE(registrar.isVSCodeInstalled());
    EXPECT_TRUE(registrar.registerHooks().empty());
    EXPECT_TRUE(registrar.deregister().empty());
    EXPECT_EQ(test::entriesOf(home.path() / ".config/Code"), std::vector<std::string>{});
    EXPECT_FALSE(registrar.isRegistered());

    installEditor("Code - Insiders");
    EXPECT_TRUE(registrar.isVSCodeInstalled());
    EXPECT_FALSE(registrar.isRegistered());
    EXPECT_TRUE(registrar.registerHooks().empty());
    EXPECT_EQ(read("Code - Insiders"), json({{"chat.hookFilesLocations", kRegistered}}));
    EXPECT_EQ(test::entriesOf(home.path() / ".config/Code"), std::vector<std::string>{});
    EXPECT_FALSE(fs::exists(home.path() / ".config/VSCodium"));
    EXPECT_TRUE(registrar.isRegistered());
}

TEST_F(VSCodeHookRegistrarTest, RegisteredMeansOurLocationIsTheBoolTrue) {
    for (const char* value : {"false", "\"true\"", "1"}) {
        SCOPED_TRACE(value);
        put("Code",
            std::string(R"({"chat.hookFilesLocations": {"~/.tovrin/vscode-hooks.json": )") + value + "}}");
        EXPECT_FALSE(registrar.isRegistered());
    }
    put("Code",
        R"({"chat.hookFilesLocations": {"~/.claude/settings.json": true, "~/.tovrin/vscode-hooks.json": false}})");
    EXPECT_TRUE(registrar.registerHooks().empty());
    EXPECT_EQ(read("Code"), json({{"chat.hookFilesLocations", kRegistered}}));
    EXPECT_TRUE(registrar.isRegistered());
}

TEST_F(VSCodeHookRegistrarTest, DeregisterRemovesOurKeysAndTheSettingWhenNothingElseIsLeft) {
    put("Code", R"({"chat.hookFilesLocations": {"~/.tovrin/vscode-hooks.json": true,
                    "~/.claude/settings.json": false, "/x/hooks.json": false}, "a": 1})");
    put("Code - Insiders", R"({"chat.hookFilesLocations": {"~/.tovrin/vscode-hooks.json": true,
                              "~/.claude/settings.json": true}, "a": 2})");
    installEditor("VSCodium");

    EXPECT_TRUE(registrar.deregister().empty());
    EXPECT_EQ(read("Code"), json({{"a", 1}, {"chat.hookFilesLocations", {{"/x/hooks.json", false}}}}));
    EXPECT_EQ(read("Code - Insiders"), json({{"a", 2}}));
    EXPECT_EQ(read("VSCodium"), json::object());
    EXPECT_FALSE(registrar.isRegistered());
}

TEST_F(VSCodeHookRegistrarTest, ASettingThatIsNotAnObjectIsLeftToTheUser) {
    const std::string content = R"({"chat.hookFilesLocations": ["~/.tovrin/vscode-hooks.json"]})";
    const auto file = put("Code", content);
    const auto skipped = registrar.registerHooks();
    ASSERT_EQ(skipped.size(), 1u);
    EXPECT_EQ(skipped[0].url, file);
    EXPECT_NE(skipped[0].reason.find("chat.hookFilesLocations"), std::string::npos);
    EXPECT_EQ(test::readText(file), content);
    EXPECT_FALSE(registrar.isRegistered());
}

} // namespace
} // namespace tovrin
