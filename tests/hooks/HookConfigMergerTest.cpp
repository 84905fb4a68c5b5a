#include "hooks/HookConfigMerger.h"

#include <gtest/gtest.h>
#include <random>
#include <string>
#include <vector>

namespace tovrin {
namespace {

using nlohmann::json;
using Kind = MergeStrategy::Kind;
namespace Merger = HookConfigMerger;

const char* const twoLevelTemplate = R"({"hooks": {
    "Stop": [{"hooks": [{"type": "command", "command": "~/.tovrin/agent-status.sh claude-code stop"}]}],
    "SessionStart": []}})";
const char* const ourGroup =
    R"({"hooks": [{"type": "command", "command": "~/.tovrin/agent-status.sh claude-code stop"}]})";
const char* const flatTemplate =
    R"({"version": 3, "hooks": {"stop": [{"command": "~/.tovrin/agent-status.sh cursor stop"}]}})";
const char* const ourFlatEntry = R"({"command": "~/.tovrin/agent-status.sh cursor stop"})";

std::string with(std::string text, const std::string& placeholder, const std::string& replacement) {
    for (auto at = text.find(placeholder); at != std::string::npos; at = text.find(placeholder))
        text.replace(at, placeholder.size(), replacement);
    return text;
}

// "OURS" in a case's text stands for our group (two-level) or our entry (flat).
json document(const std::string& text, Kind kind) {
    return json::parse(with(text, "OURS", kind == Kind::flat ? ourFlatEntry : ourGroup));
}

struct MergeCase {
    std::string name;
    MergeStrategy strategy;
    std::string ours;
    std::string before;
    std::string after;
};

TEST(HookConfigMerger, MergeKeepsForeignContentAndPutsOursLast) {
    const std::string antigravity = R"({"tovrin": {"hooks": [{"command": "~/.tovrin/agent-status.sh ag"}]}})";
    const std::vector<MergeCase> cases = {
        {"empty document takes the template's hooks, empty event included", MergeStrategy::twoLevel(),
         twoLevelTemplate, "{}", R"({"hooks": {"Stop": [OURS], "SessionStart": []}})"},
        {"foreign groups first, an earlier install replaced, other keys untouched", MergeStrategy::twoLevel(),
         twoLevelTemplate,
         R"({"model": "x", "hooks": {
              "Stop": [{"matcher": "*", "hooks": [{"command": "say done"}]},
                       {"hooks": [{"command": "/old/place/agent-status.sh stop"}]}],
              "Other": [{"hooks": [{"bash": "echo"}]}]}})",
         R"({"model": "x", "hooks": {
              "Stop": [{"matcher": "*", "hooks": [{"command": "say done"}]}, OURS],
              "Other": [{"hooks": [{"bash": "echo"}]}], "SessionStart": []}})"},
        {"hooks that is not an object is replaced", MergeStrategy::twoLevel(), twoLevelTemplate,
         R"({"hooks": "oops", "a": 1})", R"({"a": 1, "hooks": {"Stop": [OURS], "SessionStart": []}})"},
        {"an event that is not an array is kept in front of ours", MergeStrategy::twoLevel(),
         twoLevelTemplate,
         R"({"hooks": {"Stop": {"matcher": "m", "hooks": [{"command": "say"}]}, "SessionStart": 7, "Other": 5}})",
         R"({"hooks": {"Stop": [{"matcher": "m", "hooks": [{"command": "say"}]}, OURS],
                       "SessionStart": [7], "Other": 5}})"},
        {"an earlier install left as a bare group is replaced", MergeStrategy::twoLevel(), twoLevelTemplate,
         R"({"hooks": {"Stop": {"hooks": [{"command": "/old/agent-status.sh"}]}}})",
         R"({"hooks": {"Stop": [OURS], "SessionStart": []}})"},
        {"groups of another shape are kept", MergeStrategy::twoLevel(), twoLevelTemplate,
         R"({"hooks": {"Stop": ["loose", {"hooks": "x", "matcher": "m"}]}})",
         R"({"hooks": {"Stop": ["loose", {"hooks": "x", "matcher": "m"}, OURS], "SessionStart": []}})"},
        {"flat keeps its version and bare strings, replaces our old entry", MergeStrategy::flat(),
         flatTemplate,
         R"({"version": 2, "hooks": {"stop": ["/x/agent-status.sh", {"command": "/y/agent-status.sh"}]}})",
         R"({"version": 2, "hooks": {"stop": ["/x/agent-status.sh", OURS]}})"},
        {"flat without version takes the template's", MergeStrategy::flat(), flatTemplate, R"({"v": null})",
         R"({"v": null, "version": 3, "hooks": {"stop": [OURS]}})"},
        {"flat without version anywhere takes 1", MergeStrategy::flat(), R"({"hooks": {"stop": [OURS]}})",
         "{}", R"({"version": 1, "hooks": {"stop": [OURS]}})"},
        {"an event of ours that is not an array is skipped", MergeStrategy::flat(),
         R"({"hooks": {"stop": [OURS], "start": {"command": "agent-status.sh"}}})", R"({"version": null})",
         R"({"version": null, "hooks": {"stop": [OURS]}})"},
        {"named block replaces the whole key, keeps the rest", MergeStrategy::namedBlock("tovrin"),
         antigravity, R"({"tovrin": {"mine": true}, "other": {"k": 1}})",
         R"({"tovrin": {"hooks": [{"command": "~/.tovrin/agent-status.sh ag"}]}, "other": {"k": 1}})"},
        {"dedicated file is the template", MergeStrategy::dedicatedFile(), antigravity, R"({"foreign": 1})",
         antigravity},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        const json ours = document(c.ours, c.strategy.kind);
        const json merged = Merger::merge(ours, document(c.before, c.strategy.kind), c.strategy);
        EXPECT_EQ(merged, document(c.after, c.strategy.kind)) << merged.dump();
        EXPECT_TRUE(Merger::isInstalled(merged, c.strategy));
        EXPECT_EQ(Merger::merge(ours, merged, c.strategy), merged) << "installing twice differs";
    }
}

struct RemoveCase {
    std::string name;
    MergeStrategy strategy;
    std::string before;
    std::string after;
    bool installedBefore;
};

TEST(HookConfigMerger, RemoveTakesOutOnlyOurEntriesAndTidies) {
    const std::string ours = R"({"command": "~/.tovrin/agent-status.sh x"})";
    const std::vector<RemoveCase> cases = {
        {"a mixed group keeps the foreign entry and its other keys", MergeStrategy::twoLevel(),
         R"({"hooks": {"Stop": [{"matcher": "*", "timeout": 5, "hooks": [{"command": "say"}, OURS]}]}})",
         R"({"hooks": {"Stop": [{"matcher": "*", "timeout": 5, "hooks": [{"command": "say"}]}]}})", true},
        {"groups of only ours go, then their event", MergeStrategy::twoLevel(),
         R"({"hooks": {"Stop": [{"hooks": [OURS]}], "Start": [{"hooks": [OURS, OURS]}, {"hooks": [{"bash": "b"}]}]}})",
         R"({"hooks": {"Start": [{"hooks": [{"bash": "b"}]}]}})", true},
        {"nothing but ours leaves an empty document", MergeStrategy::twoLevel(),
         R"({"hooks": {"Stop": [{"hooks": [OURS]}]}})", "{}", true},
        {"empty events, empty groups and groups without hooks vanish", MergeStrategy::twoLevel(),
         R"({"hooks": {"A": [], "B": [{"matcher": "x"}], "C": [{"hooks": []}], "D": [{"hooks": [{"bash": "b"}]}]}})",
         R"({"hooks": {"D": [{"hooks": [{"bash": "b"}]}]}})", false},
        {"ownership is told by command, else bash", MergeStrategy::twoLevel(),
         R"({"hooks": {"S": [{"hooks": [{"command": "say", "bash": "agent-status.sh"}, {"bash": "/x/agent-status.sh"},
                                        {"command": 5, "bash": "/x/agent-status.sh"}, {"command": "Agent-Status.sh"},
                                        {"command": "say", "args": ["agent-status.sh"]}]}]}})",
         R"({"hooks": {"S": [{"hooks": [{"command": "say", "bash": "agent-status.sh"}, {"command": "Agent-Status.sh"},
                                        {"command": "say", "args": ["agent-status.sh"]}]}]}})",
         true},
        {"hooks as a string is left alone", MergeStrategy::twoLevel(), R"({"hooks": "agent-status.sh"})",
         R"({"hooks": "agent-status.sh"})", false},
        {"foreign shapes are kept even with the marker inside", MergeStrategy::twoLevel(),
         R"({"hooks": {"A": "x", "B": [5, {"hooks": {"command": "agent-status.sh"}}]}})",
         R"({"hooks": {"A": "x", "B": [5, {"hooks": {"command": "agent-status.sh"}}]}})", true},
        {"flat keeps version and bare strings", MergeStrategy::flat(),
         R"({"version": 1, "hooks": {"stop": ["agent-status.sh", OURS], "start": [OURS]}})",
         R"({"version": 1, "hooks": {"stop": ["agent-status.sh"]}})", true},
        {"flat with only ours keeps version", MergeStrategy::flat(),
         R"({"version": 1, "hooks": {"stop": [OURS]}})", R"({"version": 1})", true},
        {"named block with the marker goes", MergeStrategy::namedBlock("tovrin"),
         R"({"tovrin": {"hooks": [OURS]}, "x": 1})", R"({"x": 1})", true},
        {"named block without the marker stays; other keys are not ours", MergeStrategy::namedBlock("tovrin"),
         R"({"tovrin": {"mine": true}, "other": "agent-status.sh"})",
         R"({"tovrin": {"mine": true}, "other": "agent-status.sh"})", false},
        {"dedicated file empties whatever it held", MergeStrategy::dedicatedFile(),
         R"({"foreign": 1, "x": [OURS]})", "{}", true},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        const json before = json::parse(with(c.before, "OURS", ours));
        EXPECT_EQ(Merger::isInstalled(before, c.strategy), c.installedBefore);
        const json removed = Merger::remove(before, c.strategy);
        EXPECT_EQ(removed, json::parse(with(c.after, "OURS", ours))) << removed.dump();
        EXPECT_EQ(Merger::remove(removed, c.strategy), removed) << "removing twice differs";
    }
}

TEST(HookConfigMerger, ContainsOurCommandSearchesEveryStringValueButNoKey) {
    const std::vector<std::pair<std::string, bool>> cases = {
        {"5", false},
        {"null", false},
        {"true", false},
        {R"("bash ~/.tovrin/agent-status.sh")", true},
        {R"("Agent-Status.sh")", false},
        {R"({"agent-status.sh": 1})", false},
        {R"([[{"a": ["x", "run agent-status.sh now"]}]])", true},
    };
    for (const auto& [text, expected] : cases) {
        EXPECT_EQ(Merger::containsOurCommand(json::parse(text)), expected) << text;
    }
}

// Foreign documents of every shape the merger must live with, but without empty events or
// groups (those are tidied away, by design).
class ForeignDocuments {
public:
    explicit ForeignDocuments(unsigned seed) : m_random(seed) {}

    json document(Kind kind) {
        json doc = json::object();
        for (int i = below(4); i > 0; --i)
            doc[pick({"model", "env", "permissions", "theme"})] = value(2);
        if (kind == Kind::flat && below(2)) doc["version"] = scalar();
        const int shape = below(20);
        if (shape < 2) {
            doc["hooks"] = below(2) ? scalar() : value(2);
            if (doc["hooks"].is_object()) doc["hooks"] = "not an object";
        } else if (shape < 18) {
            json& hooks = doc["hooks"] = json::object();
            for (int i = 1 + below(4); i > 0; --i)
                hooks[eventName()] = event(kind);
        }
        return doc;
    }

    json ourTemplate(Kind kind) {
        json hooks = json::object();
        for (int i = 1 + below(3); i > 0; --i) {
            json& entries = hooks[eventName()] = json::array();
            for (int n = Merger::containsOurCommand(hooks) ? below(3) : 1 + below(2); n > 0; --n) {
                const json entry = {{"type", "command"},
                                    {"command", "~/.tovrin/agent-status.sh t " + word()}};
                entries.push_back(kind == Kind::flat ? entry : json{{"hooks", json::array({entry})}});
            }
        }
        if (below(5) == 0) hooks["Bogus"] = "not an array";
        json ours = {{"hooks", hooks}};
        if (kind == Kind::flat && below(2)) ours["version"] = 1 + below(3);
        return ours;
    }

private:
    int below(int n) { return std::uniform_int_distribution<int>(0, n - 1)(m_random); }
    std::string pick(std::initializer_list<const char*> names) {
        return *(names.begin() + below(static_cast<int>(names.size())));
    }
    std::string word() {
        return pick({"say", "echo done", "notify-send hi", "status.sh", "agent-status", ""});
    }
    std::string eventName() { return pick({"Stop", "SessionStart", "Notification", "PreToolUse", "stop"}); }

    json scalar() {
        switch (below(5)) {
        case 0:
            return nullptr;
        case 1:
            return below(2) == 1;
        case 2:
            return below(1000) - 500;
        case 3:
            return 0.5 * below(9);
        default:
            return word();
        }
    }

    json value(int depth) {
        if (depth == 0 || below(3) == 0) return scalar();
        json v = below(2) ? json::array() : json::object();
        for (int i = below(3); i > 0; --i) {
            if (v.is_array())
                v.push_back(value(depth - 1));
            else
                v[word()] = value(depth - 1);
        }
        return v;
    }

    // Never ours, though some carry the marker where ownership is not looked for.
    json entry() {
        switch (below(6)) {
        case 0:
            return {{"type", "command"}, {"command", word()}};
        case 1:
            return {{"command", word()}, {"bash", "~/.tovrin/agent-status.sh"}};
        case 2:
            return {{"bash", word()}, {"timeout", below(60)}};
        case 3:
            return {{"command", word()}, {"args", json::array({"agent-status.sh"})}};
        case 4:
            return json::object();
        default:
            return scalar();
        }
    }

    json objectGroup() {
        json group = json::object();
        if (below(2)) group["matcher"] = word();
        if (below(4) == 0) {
            group["hooks"] = below(2) ? scalar() : json{{"command", word()}};
        } else {
            json& entries = group["hooks"] = json::array();
            for (int i = 1 + below(3); i > 0; --i)
                entries.push_back(entry());
        }
        return group;
    }

    json event(Kind kind) {
        if (below(5) == 0) {
            if (below(2)) return scalar();
            return kind == Kind::flat ? json{{"command", word()}} : objectGroup();
        }
        json items = json::array();
        for (int i = 1 + below(3); i > 0; --i) {
            if (kind == Kind::flat)
                items.push_back(entry());
            else
                items.push_back(below(4) == 0 ? json::array({scalar()}) : objectGroup());
        }
        return items;
    }

    std::mt19937 m_random;
};

// What the foreign part of a document becomes after an install and a remove: a "hooks" that is
// not an object gives way, an event we installed into stays an array, flat gains a version.
json afterRoundTrip(json foreign, const json& ours, Kind kind) {
    if (kind == Kind::flat && !foreign.contains("version"))
        foreign["version"] = ours.value("version", json(1));
    const auto hooks = foreign.find("hooks");
    if (hooks == foreign.end()) return foreign;
    if (!hooks->is_object() || hooks->empty()) {
        foreign.erase(hooks);
        return foreign;
    }
    for (const auto& [event, entries] : ours["hooks"].items()) {
        const auto it = hooks->find(event);
        if (entries.is_array() && it != hooks->end() && !it->is_array()) *it = json::array({*it});
    }
    return foreign;
}

TEST(HookConfigMerger, InstallThenRemoveGivesBackForeignDocuments) {
    for (const auto& strategy : {MergeStrategy::twoLevel(), MergeStrategy::flat()}) {
        ForeignDocuments random(strategy.kind == Kind::flat ? 7u : 11u);
        for (int i = 0; i < 300; ++i) {
            const json foreign = random.document(strategy.kind);
            const json ours = random.ourTemplate(strategy.kind);
            SCOPED_TRACE("foreign " + foreign.dump() + "\nours " + ours.dump());

            const json merged = Merger::merge(ours, foreign, strategy);
            ASSERT_TRUE(Merger::isInstalled(merged, strategy)) << merged.dump();
            ASSERT_EQ(Merger::merge(ours, merged, strategy), merged) << "installing twice differs";
            ASSERT_EQ(Merger::remove(merged, strategy), afterRoundTrip(foreign, ours, strategy.kind))
                << merged.dump();
        }
    }
}

} // namespace
} // namespace tovrin
