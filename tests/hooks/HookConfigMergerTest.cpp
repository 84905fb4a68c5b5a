#include "hooks/HookConfigMerger.h"

#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace tovrin {
namespace {

using nlohmann::json;
using Kind = MergeStrategy::Kind;
namespace Merger = HookConfigMerger;

const HookOwnership owner("/h/.tovrin/agent-status.sh");
const char* const twoLevelTemplate = R"({"hooks": {
    "Stop": [{"hooks": [{"type": "command", "command": "/h/.tovrin/agent-status.sh claude-code stop"}]}],
    "SessionStart": []}})";
const char* const ourGroup =
    R"({"hooks": [{"type": "command", "command": "/h/.tovrin/agent-status.sh claude-code stop"}]})";
const char* const flatTemplate =
    R"({"version": 3, "hooks": {"stop": [{"command": "/h/.tovrin/agent-status.sh cursor stop"}]}})";
const char* const ourFlatEntry = R"({"command": "/h/.tovrin/agent-status.sh cursor stop"})";

std::string with(std::string text, const std::string& placeholder, const std::string& replacement) {
    for (auto at = text.find(placeholder); at != std::string::npos; at = text.find(placeholder))
        text.replace(at, placeholder.size(), replacement);
    return text;
}

// "OURS" in a case's text stands for our group (two-level) or our entry (the others).
json document(const std::string& text, Kind kind) {
    return json::parse(with(text, "OURS", kind == Kind::twoLevel ? ourGroup : ourFlatEntry));
}

struct MergeCase {
    std::string name;
    MergeStrategy strategy;
    std::string ours;
    std::string before;
    std::string after; // empty: refused
};

TEST(HookConfigMerger, MergeKeepsForeignContentPutsOursLastOrRefuses) {
    const std::string antigravity =
        R"({"tovrin": {"hooks": [{"command": "/h/.tovrin/agent-status.sh ag"}]}})";
    const std::vector<MergeCase> cases = {
        {"empty document takes the template's hooks, empty event included", MergeStrategy::twoLevel(),
         twoLevelTemplate, "{}", R"({"hooks": {"Stop": [OURS], "SessionStart": []}})"},
        {"foreign groups first, an earlier install replaced, other keys untouched", MergeStrategy::twoLevel(),
         twoLevelTemplate,
         R"({"model": "x", "hooks": {
              "Stop": [{"matcher": "*", "hooks": [{"command": "say done"}]},
                       {"hooks": [{"command": "'/h/.tovrin/agent-status.sh' old stop"}]}],
              "Other": [{"hooks": [{"bash": "echo"}]}]}})",
         R"({"model": "x", "hooks": {
              "Stop": [{"matcher": "*", "hooks": [{"command": "say done"}]}, OURS],
              "Other": [{"hooks": [{"bash": "echo"}]}], "SessionStart": []}})"},
        {"a script of the same name elsewhere is the user's", MergeStrategy::twoLevel(), twoLevelTemplate,
         R"({"hooks": {"Stop": [{"hooks": [{"command": "~/bin/agent-status.sh stop"}]}]}})",
         R"({"hooks": {"Stop": [{"hooks": [{"command": "~/bin/agent-status.sh stop"}]}, OURS],
                       "SessionStart": []}})"},
        {"groups of other shapes and events we don't use are kept as they are", MergeStrategy::twoLevel(),
         twoLevelTemplate,
         R"({"hooks": {"Stop": ["loose", {"hooks": "x"}, {"matcher": "m"}, {"hooks": []}], "Other": 5}})",
         R"({"hooks": {"Stop": ["loose", {"hooks": "x"}, {"matcher": "m"}, {"hooks": []}, OURS],
                       "SessionStart": [], "Other": 5}})"},
        {"hooks that is not an object is refused", MergeStrategy::twoLevel(), twoLevelTemplate,
         R"({"hooks": ["a"]})", ""},
        {"an event of ours that is not a list is refused", MergeStrategy::twoLevel(), twoLevelTemplate,
         R"({"hooks": {"Stop": {"hooks": [{"command": "say"}]}}})", ""},
        {"flat keeps its version and bare strings, replaces our old entry", MergeStrategy::flat(),
         flatTemplate,
         R"({"version": 2, "hooks": {"stop": ["/h/.tovrin/agent-status.sh", {"command": "/h/.tovrin/agent-status.sh"}]}})",
         R"({"version": 2, "hooks": {"stop": ["/h/.tovrin/agent-status.sh", OURS]}})"},
        {"flat without version takes the template's", MergeStrategy::flat(), flatTemplate, R"({"v": null})",
         R"({"v": null, "version": 3, "hooks": {"stop": [OURS]}})"},
        {"flat without version anywhere takes 1", MergeStrategy::flat(), R"({"hooks": {"stop": [OURS]}})",
         "{}", R"({"version": 1, "hooks": {"stop": [OURS]}})"},
        {"named block replaces the whole key, keeps the rest", MergeStrategy::namedBlock("tovrin"),
         antigravity, R"({"tovrin": {"mine": true}, "other": {"k": 1}})",
         R"({"tovrin": {"hooks": [{"command": "/h/.tovrin/agent-status.sh ag"}]}, "other": {"k": 1}})"},
        {"a dedicated file of ours alone is replaced", MergeStrategy::dedicatedFile(), flatTemplate,
         R"({"version": 1, "hooks": {"start": [OURS]}})", flatTemplate},
        {"a dedicated file with someone else's entry is refused", MergeStrategy::dedicatedFile(),
         flatTemplate, R"({"version": 1, "hooks": {"stop": [OURS, {"command": "say"}]}})", ""},
        {"a dedicated file that holds only a version is refused", MergeStrategy::dedicatedFile(),
         flatTemplate, R"({"version": 1})", ""},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        const json ours = document(c.ours, c.strategy.kind);
        const json before = document(c.before, c.strategy.kind);
        const auto merged = Merger::merge(ours, before, c.strategy, owner);
        if (c.after.empty()) {
            EXPECT_FALSE(merged.ok());
            continue;
        }
        ASSERT_TRUE(merged.ok()) << merged.error();
        EXPECT_EQ(merged.value(), document(c.after, c.strategy.kind)) << merged.value().dump();
        EXPECT_TRUE(Merger::isInstalled(merged.value(), c.strategy, owner));
        EXPECT_EQ(Merger::merge(ours, merged.value(), c.strategy, owner).value(), merged.value())
            << "installing twice differs";
    }
}

struct RemoveCase {
    std::string name;
    MergeStrategy strategy;
    std::string before;
    std::string after;
    bool installedBefore;
};

TEST(HookConfigMerger, RemoveTakesOutOnlyOurEntriesAndWhatTheyAloneFilled) {
    const std::string ours = R"({"command": "/h/.tovrin/agent-status.sh x"})";
    const std::vector<RemoveCase> cases = {
        {"a mixed group keeps the foreign entry and its other keys", MergeStrategy::twoLevel(),
         R"({"hooks": {"Stop": [{"matcher": "*", "timeout": 5, "hooks": [{"command": "say"}, OURS]}]}})",
         R"({"hooks": {"Stop": [{"matcher": "*", "timeout": 5, "hooks": [{"command": "say"}]}]}})", true},
        {"groups of only ours go, then their event", MergeStrategy::twoLevel(),
         R"({"hooks": {"Stop": [{"hooks": [OURS]}], "Start": [{"hooks": [OURS, OURS]}, {"hooks": [{"bash": "b"}]}]}})",
         R"({"hooks": {"Start": [{"hooks": [{"bash": "b"}]}]}})", true},
        {"nothing but ours leaves an empty document", MergeStrategy::twoLevel(),
         R"({"hooks": {"Stop": [{"hooks": [OURS]}]}})", "{}", true},
        {"empty events, empty groups and groups without hooks that we never filled stay",
         MergeStrategy::twoLevel(),
         R"({"hooks": {"A": [], "B": [{"matcher": "x"}], "C": [{"hooks": []}], "D": [{"hooks": [OURS]}]}})",
         R"({"hooks": {"A": [], "B": [{"matcher": "x"}], "C": [{"hooks": []}]}})", true},
        {"ownership is told by command, else bash", MergeStrategy::twoLevel(),
         R"({"hooks": {"S": [{"hooks": [{"command": "say", "bash": "/h/.tovrin/agent-status.sh"},
                                        {"bash": "/h/.tovrin/agent-status.sh x"},
                                        {"command": 5, "bash": "/h/.tovrin/agent-status.sh"},
                                        {"command": "/h/bin/agent-status.sh"}]}]}})",
         R"({"hooks": {"S": [{"hooks": [{"command": "say", "bash": "/h/.tovrin/agent-status.sh"},
                                        {"command": "/h/bin/agent-status.sh"}]}]}})",
         true},
        {"foreign shapes are kept even with our command inside", MergeStrategy::twoLevel(),
         R"({"hooks": {"A": "x", "B": [5, {"hooks": {"command": "/h/.tovrin/agent-status.sh"}}]}})",
         R"({"hooks": {"A": "x", "B": [5, {"hooks": {"command": "/h/.tovrin/agent-status.sh"}}]}})", true},
        {"hooks as a string is left alone", MergeStrategy::twoLevel(),
         R"({"hooks": "/h/.tovrin/agent-status.sh"})", R"({"hooks": "/h/.tovrin/agent-status.sh"})", false},
        {"flat keeps version and bare strings", MergeStrategy::flat(),
         R"({"version": 1, "hooks": {"stop": ["/h/.tovrin/agent-status.sh", OURS], "start": [OURS]}})",
         R"({"version": 1, "hooks": {"stop": ["/h/.tovrin/agent-status.sh"]}})", true},
        {"flat with only ours keeps version", MergeStrategy::flat(),
         R"({"version": 1, "hooks": {"stop": [OURS]}})", R"({"version": 1})", true},
        {"named block with our command goes", MergeStrategy::namedBlock("tovrin"),
         R"({"tovrin": {"hooks": [OURS]}, "x": 1})", R"({"x": 1})", true},
        {"named block without it stays; other keys are not ours", MergeStrategy::namedBlock("tovrin"),
         R"({"tovrin": {"mine": true}, "other": [OURS]})", R"({"tovrin": {"mine": true}, "other": [OURS]})",
         false},
        {"a dedicated file of ours alone comes back empty", MergeStrategy::dedicatedFile(),
         R"({"version": 1, "hooks": {"a": [OURS]}})", "{}", true},
        {"a dedicated file loses only our entries", MergeStrategy::dedicatedFile(),
         R"({"version": 1, "hooks": {"a": [OURS, {"bash": "say"}]}, "x": 1})",
         R"({"version": 1, "hooks": {"a": [{"bash": "say"}]}, "x": 1})", true},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        const json before = json::parse(with(c.before, "OURS", ours));
        EXPECT_EQ(Merger::isInstalled(before, c.strategy, owner), c.installedBefore);
        const json removed = Merger::remove(before, c.strategy, owner);
        EXPECT_EQ(removed, json::parse(with(c.after, "OURS", ours))) << removed.dump();
        EXPECT_EQ(Merger::remove(removed, c.strategy, owner), removed) << "removing twice differs";
    }
}

// Whether a value of the user's leaves our entries no place, so that merge must refuse.
bool leavesNoPlace(const json& foreign, const json& ours) {
    const auto hooks = foreign.find("hooks");
    if (hooks == foreign.end()) return false;
    if (!hooks->is_object()) return true;
    for (const auto& [event, entries] : ours["hooks"].items()) {
        if (entries.is_array() && hooks->contains(event) && !hooks->at(event).is_array()) return true;
    }
    return false;
}

// Documents of the user's in the shapes the merger must live with, holding nothing of ours though
// some carry our writer's path where ownership is not looked for. (No empty list under "hooks":
// one that we fill and empty again goes, by design.) Whatever install accepts, uninstall gives
// back, but for the version a flat file must have.
TEST(HookConfigMerger, InstallThenRemoveGivesBackEveryDocumentItAccepts) {
    const std::vector<std::string> foreign = {
        "{}",
        R"({"model": {"name": [1, null, 0.5]}, "theme": "dark", "version": 2})",
        R"({"hooks": {"stop": [{"command": "say"}, "loose", 5, {}, {"command": "/h/bin/agent-status.sh"}]}})",
        R"({"hooks": {"Stop": [{"matcher": "*", "hooks": [{"command": "echo /h/.tovrin/agent-status.sh"}]},
                               {"hooks": {"command": "say"}}, [true], {"matcher": "m"}],
                      "Notification": [{"hooks": [{"command": "say", "bash": "/h/.tovrin/agent-status.sh x"},
                                                  {"bash": "notify-send hi", "timeout": 5},
                                                  {"command": "x", "args": ["/h/.tovrin/agent-status.sh"]}]}],
                      "PreToolUse": "not a list"}})",
        R"({"hooks": {"Stop": {"hooks": []}}})",
        R"({"hooks": "not an object"})",
    };
    // Templates with more than one event, and one that is no list and so is never merged.
    const json ourTwoLevel = {{"hooks",
                               {{"Stop", json::array({json::parse(ourGroup)})},
                                {"Notification", json::array({json::parse(ourGroup)})},
                                {"Bogus", "not an array"}}}};
    const json ourFlat = {{"version", 3},
                          {"hooks", {{"stop", json::array({json::parse(ourFlatEntry)})}, {"Bogus", 1}}}};
    for (const auto& [strategy, ours] :
         {std::pair{MergeStrategy::twoLevel(), ourTwoLevel}, std::pair{MergeStrategy::flat(), ourFlat}}) {
        for (const auto& text : foreign) {
            const json document = json::parse(text);
            SCOPED_TRACE(text + (strategy.kind == Kind::flat ? " (flat)" : " (two-level)"));
            const auto merged = Merger::merge(ours, document, strategy, owner);
            ASSERT_EQ(merged.ok(), !leavesNoPlace(document, ours));
            if (!merged) continue;
            EXPECT_TRUE(Merger::isInstalled(merged.value(), strategy, owner)) << merged.value().dump();
            EXPECT_EQ(Merger::merge(ours, merged.value(), strategy, owner).value(), merged.value())
                << "installing twice differs";
            json expected = document;
            if (strategy.kind == Kind::flat && !expected.contains("version")) expected["version"] = 3;
            EXPECT_EQ(Merger::remove(merged.value(), strategy, owner), expected) << merged.value().dump();
        }
    }
}

} // namespace
} // namespace tovrin
