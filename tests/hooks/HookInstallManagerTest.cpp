#include "hooks/HookInstallManager.h"

#include "hooks/HookConfigMerger.h"
#include "hooks/HookFileError.h"
#include "hooks/HookFileStore.h"
#include "support/SamplePayload.h"
#include "support/TempDir.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <sys/stat.h>

namespace tovrin {
namespace {

namespace fs = std::filesystem;
using nlohmann::json;
using State = HookInstallManager::State;

std::vector<std::string> idsOf(const std::vector<HookTarget>& targets) {
    std::vector<std::string> ids;
    for (const auto& t : targets)
        ids.push_back(t.id);
    return ids;
}

// A temporary home with the sample payload beside it and the real file store.
class HookInstallManagerTest : public ::testing::Test {
protected:
    HookInstallManagerTest()
        : home(dir.path() / "my home"),
          manager(HookInstallManager::forHome(home, test::writeSamplePayload(dir.path() / "Adapters"),
                                              std::make_shared<HookFileStore>())),
          targets(HookTarget::all(home)) {
        fs::create_directories(home);
    }

    const HookTarget& target(const std::string& id) const {
        return *std::find_if(targets.begin(), targets.end(), [&](const HookTarget& t) { return t.id == id; });
    }
    fs::path put(const std::string& relative, const std::string& content) const {
        return dir.write("my home/" + relative, content);
    }
    void presentAgents(std::initializer_list<const char*> folders) const {
        for (const char* folder : folders)
            fs::create_directories(home / folder);
    }
    json read(const fs::path& file) const { return json::parse(test::readText(file)); }
    std::vector<State> states() const {
        std::vector<State> result;
        for (const auto& t : targets)
            result.push_back(manager.state(t));
        return result;
    }

    test::TempDir dir;
    fs::path home;
    HookInstallManager manager;
    std::vector<HookTarget> targets;
};

TEST_F(HookInstallManagerTest, SetUpCoversTheDefaultAgentsPresentIsRepeatableAndNeverTouchesOptIns) {
    presentAgents({".claude"});
    put(".claude/settings.json", R"({"model": "x", "hooks": {"Stop": [{"hooks": [{"command": "mine"}]}]}})");
    EXPECT_EQ(idsOf(manager.installDefaults(targets)), std::vector<std::string>{"claude-code"});
    EXPECT_EQ(read(home / ".claude/settings.json")["hooks"]["Stop"][1]["hooks"][0]["command"],
              "'" + (home / ".tovrin/agent-status.sh").string() + "' claude-code stop");
    EXPECT_EQ(test::readText(home / ".tovrin/agent-status.sh"), test::sampleWriter);
    EXPECT_EQ(test::readText(home / ".tovrin/.writer-version"), WriterInstaller::currentAppVersion());
    EXPECT_EQ(states(),
              (std::vector<State>{State::installed(), State::agentMissing(), State::agentMissing(),
                                  State::agentMissing(), State::agentMissing(), State::agentMissing()}));

    presentAgents({".codex", ".copilot", ".cursor", ".gemini", ".config/Code/User"});
    const std::vector<std::string> defaults{"claude-code", "codex", "copilot-cli", "vscode"};
    EXPECT_EQ(idsOf(manager.installDefaults(targets)), defaults);
    const auto firstClaude = test::readText(home / ".claude/settings.json");
    const auto firstCopilot = test::readText(home / ".copilot/hooks/tovrin.json");
    EXPECT_EQ(idsOf(manager.installDefaults(targets)), defaults);
    EXPECT_EQ(test::readText(home / ".claude/settings.json"), firstClaude);
    EXPECT_EQ(test::readText(home / ".copilot/hooks/tovrin.json"), firstCopilot);

    const auto claude = read(home / ".claude/settings.json");
    EXPECT_EQ(claude["model"], "x");
    EXPECT_EQ(claude["hooks"]["Stop"].size(), 2u) << "the user's group first, ours after it, once";
    EXPECT_EQ(claude["hooks"]["Stop"][0]["hooks"][0]["command"], "mine");
    EXPECT_TRUE(read(
        home / ".config/Code/User/settings.json")["chat.hookFilesLocations"]["~/.tovrin/vscode-hooks.json"]);
    EXPECT_FALSE(fs::exists(home / ".cursor/hooks.json"));
    EXPECT_FALSE(fs::exists(home / ".gemini/config"));
    EXPECT_EQ(states(),
              (std::vector<State>{State::installed(), State::installed(), State::installed(),
                                  State::installed(), State::notInstalled(), State::notInstalled()}));
}

TEST_F(HookInstallManagerTest, AFileWithCommentsIsLeftAloneAndTheOthersGoOn) {
    presentAgents({".codex"});
    const std::string commented = "{\n  // my settings\n  \"model\": \"x\"\n}\n";
    const auto file = put(".claude/settings.json", commented);

    EXPECT_EQ(idsOf(manager.installDefaults(targets)), std::vector<std::string>{"codex"});
    EXPECT_EQ(test::readText(file), commented);
    EXPECT_FALSE(fs::exists(HookFileStore::backupPath(file)));
    EXPECT_EQ(manager.state(target("claude-code")), State::unreadable(HookFileError::unreadableJSON(file)));

    const auto install = manager.install(target("claude-code"));
    ASSERT_FALSE(install);
    EXPECT_EQ(install.error(),
              "settings.json is not plain JSON (it may use comments). Tovrin left it untouched.");
    ASSERT_FALSE(manager.uninstall(target("claude-code"))) << "an unreadable file can't be uninstalled from";
    EXPECT_EQ(test::readText(file), commented);
}

TEST_F(HookInstallManagerTest, StatesOfFilesThatAreAbsentEmptyOrOdd) {
    presentAgents({".claude", ".copilot/hooks"});
    put(".codex", "a plain file counts as the agent being there");
    put(".cursor/hooks.json", "");
    put(".gemini/config/hooks.json", R"({"tovrin": {"hooks": "someone else's block"}})");
    EXPECT_EQ(states(),
              (std::vector<State>{State::notInstalled(), State::notInstalled(), State::notInstalled(),
                                  State::agentMissing(), State::notInstalled(), State::notInstalled()}));

    fs::create_directories(home / ".claude/settings.json"); // a folder where the file should be
    EXPECT_EQ(manager.state(target("claude-code")).kind, State::Kind::unreadable);
    EXPECT_FALSE(manager.state(target("claude-code")).reason.empty());
}

TEST_F(HookInstallManagerTest, VSCodeNeedsItsFileAndAnEditorPointingAtIt) {
    presentAgents({".config/VSCodium/User"});
    const auto& vscode = target("vscode");
    EXPECT_EQ(manager.state(vscode), State::notInstalled());

    // Only a commented settings file: the hook file lands, the editor is reported, and nothing
    // points at the file yet.
    const std::string commented = "{ /* mine */ }";
    const auto codium = put(".config/VSCodium/User/settings.json", commented);
    auto install = manager.install(vscode);
    ASSERT_TRUE(install) << install.error();
    EXPECT_EQ(install.value(), (std::vector<VSCodeHookRegistrar::SkippedSettings>{
                                   {codium, HookFileError::unreadableJSON(codium)}}));
    EXPECT_EQ(test::readText(codium), commented);
    EXPECT_FALSE(fs::exists(HookFileStore::backupPath(codium)));
    EXPECT_TRUE(HookConfigMerger::isInstalled(read(home / ".tovrin/vscode-hooks.json"), vscode.strategy,
                                              manager.ownership()));
    EXPECT_EQ(manager.state(vscode), State::notInstalled());

    presentAgents({".config/Code/User"});
    install = manager.install(vscode);
    ASSERT_TRUE(install);
    EXPECT_EQ(install.value().size(), 1u);
    EXPECT_EQ(manager.state(vscode), State::installed());

    put(".tovrin/vscode-hooks.json", "{oops");
    EXPECT_EQ(manager.state(vscode), State::notInstalled()) << "our own file is never shown as unreadable";
    install = manager.install(vscode);
    ASSERT_FALSE(install);
    EXPECT_EQ(install.error(),
              "vscode-hooks.json is not plain JSON (it may use comments). Tovrin left it untouched.");
}

TEST_F(HookInstallManagerTest, UninstallKeepsMergedFilesAndDeletesDedicatedOnes) {
    presentAgents({".claude", ".copilot", ".cursor"});
    ASSERT_TRUE(manager.uninstall(target("claude-code")));
    EXPECT_FALSE(fs::exists(home / ".claude/settings.json")) << "nothing to clean, nothing written";

    put(".cursor/hooks.json", R"({"version": 2, "hooks": {"stop": [{"command": "mine"}]}})");
    for (const char* id : {"claude-code", "copilot-cli", "cursor"})
        ASSERT_TRUE(manager.install(target(id)));
    ASSERT_TRUE(manager.install(target("copilot-cli"))); // a second write leaves a backup
    ASSERT_TRUE(fs::exists(home / ".copilot/hooks/tovrin.json.tovrin.bak"));

    for (const char* id : {"claude-code", "copilot-cli", "cursor"})
        ASSERT_TRUE(manager.uninstall(target(id)));
    EXPECT_EQ(read(home / ".claude/settings.json"), json::object());
    EXPECT_EQ(read(home / ".cursor/hooks.json"),
              json({{"version", 2}, {"hooks", {{"stop", {{{"command", "mine"}}}}}}}));
    EXPECT_EQ(test::entriesOf(home / ".copilot/hooks"), std::vector<std::string>{});
    EXPECT_EQ(states(),
              (std::vector<State>{State::notInstalled(), State::agentMissing(), State::notInstalled(),
                                  State::agentMissing(), State::notInstalled(), State::agentMissing()}));
}

TEST_F(HookInstallManagerTest, UninstallAllRemovesEverythingOfOursAndLeavesTheFolder) {
    presentAgents({".claude", ".gemini", ".config/Code/User"});
    put(".gemini/config/hooks.json", R"({"other": true})");
    ASSERT_TRUE(manager.install(target("claude-code")));
    ASSERT_TRUE(manager.install(target("vscode")));
    ASSERT_TRUE(manager.install(target("antigravity")));
    put(".codex/hooks.json", "{ // broken\n}"); // a failure on the way does not stop the rest

    manager.uninstallAll(targets);
    EXPECT_EQ(test::entriesOf(home / ".tovrin"), std::vector<std::string>{});
    EXPECT_EQ(read(home / ".gemini/config/hooks.json"), json({{"other", true}}));
    EXPECT_EQ(read(home / ".config/Code/User/settings.json"), json::object());
    for (const auto& state : states())
        EXPECT_NE(state, State::installed());
}

TEST_F(HookInstallManagerTest, ABrokenPayloadFailsBeforeTheAgentsFileIsTouched) {
    presentAgents({".claude"});
    const auto file = put(".claude/settings.json", R"({"a": 1})");
    fs::remove(dir.path() / "Adapters/configs/claude-code.json");
    auto install = manager.install(target("claude-code"));
    ASSERT_FALSE(install);
    EXPECT_NE(install.error().find("claude-code.json"), std::string::npos) << install.error();

    fs::remove(dir.path() / "Adapters/agent-status.sh");
    install = manager.install(target("codex"));
    ASSERT_FALSE(install);
    EXPECT_EQ(install.error(), AdapterResources::payloadMissingMessage());
    EXPECT_EQ(test::readText(file), R"({"a": 1})");
    EXPECT_TRUE(manager.installDefaults(targets).empty());
}

// Files as careful users and abusers leave them, under the shipped templates. Each is installed
// into and uninstalled from in a home of its own: what install accepts comes back as it was,
// with the user's bytes kept once as the original; what it refuses stays byte for byte. (Files the
// store can't read back exactly are refused before any merge: see HookFileStoreTest.)
TEST(HookInstallManagerHostileFiles, NothingOfTheUsersIsEverLost) {
    struct Case {
        const char* name;
        const char* target;
        std::string content;
        std::string refusal; // empty: accepted
        mode_t mode = 0644;
    };
    const std::string deep = "{\"x\": " + std::string(100000, '[') + std::string(100000, ']') + "}";
    const std::string noPlace = ", so there is no place for Tovrin's hooks. Tovrin left it untouched.";
    const std::vector<Case> cases = {
        {"a user's own agent-status.sh", "claude-code",
         R"({"hooks": {"Stop": [{"hooks": [{"type": "command", "command": "~/bin/agent-status.sh"}]}]}})",
         ""},
        {"a command that mentions the name", "codex",
         R"({"hooks": {"Stop": [{"hooks": [{"command": "echo agent-status.sh done"}]}]}})", ""},
        {"a group without its hooks list", "claude-code", R"({"hooks": {"Stop": [{"matcher": "x"}]}})", ""},
        {"an event we don't use as an object", "claude-code",
         R"({"hooks": {"Mine": {"a": [1]}}, "model": "m"})", ""},
        {"other keys beside our block", "antigravity", R"({"mine": {"tovrinish": true}})", ""},
        {"big but exact numbers", "cursor",
         R"({"version": 1, "n": [18446744073709551615, -9223372036854775808, 0.1]})", ""},
        {"settings of an editor", "vscode",
         R"({"editor.fontSize": 13.5, "chat.hookFilesLocations": {"a": true}})", ""},
        {"hooks as a string", "claude-code", R"({"hooks": "none"})",
         "settings.json: its \"hooks\" is not an object" + noPlace},
        {"hooks as an array", "cursor", R"({"hooks": []})",
         "hooks.json: its \"hooks\" is not an object" + noPlace},
        {"an event of ours as an object", "claude-code", R"({"hooks": {"Stop": {"hooks": []}}})",
         "settings.json: \"Stop\" under \"hooks\" is not a list" + noPlace},
        {"someone else's entry in our own file", "copilot-cli",
         R"({"version": 1, "hooks": {"sessionEnd": [{"bash": "say"}]}})",
         "tovrin.json: it holds entries that are not Tovrin's. Tovrin left it untouched."},
        {"100,000 levels deep in an editor's settings", "vscode", deep, ""},
        {"read-only", "claude-code", R"({"model": "m"})",
         "settings.json is read-only. Tovrin left it untouched.", 0444},
    };
    const fs::path shipped = TOVRIN_SOURCE_ADAPTERS_DIR;
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        test::TempDir dir;
        const auto home = dir.path();
        const auto manager =
            HookInstallManager::forHome(home, AdapterResources{shipped}, std::make_shared<HookFileStore>());
        const auto targets = HookTarget::all(home);
        const auto& target =
            *std::find_if(targets.begin(), targets.end(), [&](auto& t) { return t.id == c.target; });
        // The editor's settings file is where VS Code's user content lives.
        const auto file =
            target.id == "vscode" ? home / ".config/Code/User/settings.json" : target.configPath;
        dir.write(fs::relative(file, home).string(), c.content);
        ::chmod(file.c_str(), c.mode);
        const auto original = HookFileStore::originalPath(file);
        const auto backup = HookFileStore::backupPath(file);

        const auto installed = manager.install(target);
        if (!c.refusal.empty()) {
            ASSERT_FALSE(installed.ok());
            EXPECT_EQ(installed.error(), c.refusal);
            EXPECT_TRUE(test::readText(file) == c.content);
            EXPECT_FALSE(fs::exists(original) || fs::exists(backup));
            EXPECT_NE(manager.state(target), State::installed());
            continue;
        }
        ASSERT_TRUE(installed.ok()) << installed.error();
        if (target.id == "vscode" && c.content == deep) {
            // The hook file is in place; the editor's settings are reported, not touched.
            ASSERT_EQ(installed.value().size(), 1u);
            EXPECT_TRUE(test::readText(file) == c.content);
            continue;
        }
        EXPECT_TRUE(installed.value().empty());
        EXPECT_EQ(manager.state(target), State::installed());
        EXPECT_EQ(test::readText(original), c.content);
        EXPECT_EQ(test::readText(backup), c.content);

        ASSERT_TRUE(manager.uninstall(target).ok());
        json expected = json::parse(c.content);
        if (target.strategy.kind == MergeStrategy::Kind::flat)
            expected["version"] = expected.value("version", json(1));
        EXPECT_EQ(json::parse(test::readText(file)), expected);
        EXPECT_EQ(test::readText(original), c.content);
        EXPECT_EQ(manager.originals(target), std::vector<fs::path>{original});
    }
}

TEST_F(HookInstallManagerTest, ADedicatedFileGoesOnlyWhenItHeldOursAlone) {
    presentAgents({".copilot"});
    const auto& copilot = target("copilot-cli");
    ASSERT_TRUE(manager.install(copilot));
    // The user adds an entry of their own to our file: only ours leave it.
    auto edited = read(copilot.configPath);
    edited["hooks"]["sessionEnd"].push_back({{"bash", "say bye"}});
    put(".copilot/hooks/tovrin.json", edited.dump());
    ASSERT_TRUE(manager.uninstall(copilot));
    EXPECT_EQ(read(copilot.configPath),
              json::parse(R"({"version": 1, "hooks": {"sessionEnd": [{"bash": "say bye"}]}})"));

    // Not a regular file: left where it is, with the reason.
    fs::remove(copilot.configPath);
    ASSERT_EQ(::mkfifo(copilot.configPath.c_str(), 0644), 0);
    const auto removed = manager.uninstall(copilot);
    ASSERT_FALSE(removed);
    EXPECT_EQ(removed.error(), "tovrin.json is not a regular file. Tovrin left it untouched.");
    EXPECT_TRUE(fs::is_fifo(copilot.configPath));
}

} // namespace
} // namespace tovrin
