// The shipped hook templates: each in its agent's own format, each command running the writer
// with a tool id and an event that the agent has, and each fitting its merge strategy.

#include "hooks/HookConfigMerger.h"
#include "hooks/HookTarget.h"
#include "hooks/HookTemplateRenderer.h"
#include "support/TempDir.h"

#include <functional>
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>
#include <set>
#include <sstream>
#include <string>
#include <vector>

namespace tovrin {
namespace {

namespace fs = std::filesystem;
using nlohmann::json;

const fs::path kAdapters = TOVRIN_SOURCE_ADAPTERS_DIR;

struct Entry {
    std::string event;
    json value;
};

// The hook entries of a document whose events map to lists of entries, or of groups holding
// them; fails the test on anything else.
std::vector<Entry> entriesOf(const json& events, bool groups,
                             const std::set<std::string>& groupedEvents = {}) {
    std::vector<Entry> entries;
    EXPECT_TRUE(events.is_object());
    for (const auto& [event, list] : events.items()) {
        SCOPED_TRACE(event);
        EXPECT_TRUE(list.is_array() && !list.empty());
        for (const auto& item : list) {
            if (groups || groupedEvents.count(event)) {
                EXPECT_TRUE(item.at("hooks").is_array());
                if (item.contains("matcher")) {
                    EXPECT_TRUE(item["matcher"].is_string());
                }
                for (const auto& e : item.at("hooks"))
                    entries.push_back({event, e});
            } else {
                entries.push_back({event, item});
            }
        }
    }
    return entries;
}

// How an agent lays out its file: events mapping to groups that hold entries, events mapping to
// entries, or Antigravity's named block of both.
enum class Layout { groups, entries, namedBlock };

struct TemplateCase {
    std::string name;
    std::string tool;                     // the id the commands pass
    std::set<std::string> agentEvents;    // the agent's own event names
    std::set<std::string> requiredEvents; // start and end, where the agent has them
    Layout layout;
    bool versioned;         // "version": 1 beside "hooks"; VS Code reads a numeric one as the CLI format
    const char* commandKey; // where the agent reads the command
    const char* timeoutKey; // whole seconds, at least one; nullptr: the agent takes none
    bool typed = true;      // "type": "command" on each entry
    std::function<void(const json&)> extra = [](const json&) {}; // what only this agent needs
};

const std::vector<TemplateCase>& cases() {
    static const std::vector<TemplateCase> all = {
        {"claude-code",
         "claude-code",
         {"SessionStart", "SessionEnd", "UserPromptSubmit", "PreToolUse", "PermissionRequest", "PostToolUse",
          "PostToolUseFailure", "Notification", "Stop", "StopFailure", "SubagentStart", "PreCompact"},
         {"SessionStart", "SessionEnd"},
         Layout::groups,
         false,
         "command",
         "timeout",
         true,
         [](const json& e) {
             if (e.contains("async")) {
                 EXPECT_TRUE(e["async"].is_boolean());
             }
         }},
        {"codex",
         "codex-cli",
         {"SessionStart", "SessionEnd", "UserPromptSubmit", "PreToolUse", "PermissionRequest", "PostToolUse",
          "PreCompact", "Stop", "Interrupt"},
         {"SessionStart", "SessionEnd"},
         Layout::groups,
         false,
         "command",
         "timeout",
         true, // Codex needs the tag
         [](const json& e) {
             EXPECT_EQ(e.value("statusMessage", ""), "tovrin") << "the name the user is told to trust";
         }},
        {"copilot-cli",
         "copilot-cli",
         {"sessionStart", "sessionEnd", "userPromptSubmitted", "preToolUse", "postToolUse",
          "postToolUseFailure", "notification", "agentStop", "errorOccurred"},
         {"sessionStart", "sessionEnd"},
         Layout::entries,
         true,
         "bash",
         "timeoutSec"},
        {"vscode",
         "copilot-vscode",
         {"SessionStart", "UserPromptSubmit", "PreToolUse", "PostToolUse", "SubagentStart", "Stop"},
         {"SessionStart"},
         Layout::entries,
         false,
         "command",
         "timeout"},
        {"cursor",
         "cursor-cli",
         {"sessionStart", "sessionEnd", "beforeSubmitPrompt", "preToolUse", "postToolUse",
          "beforeShellExecution", "beforeMCPExecution", "afterFileEdit", "stop"},
         {"sessionStart", "sessionEnd"},
         Layout::entries,
         true,
         "command",
         nullptr,
         false},
        {"antigravity",
         "antigravity-cli",
         {"SessionStart", "PreInvocation", "PreToolUse", "PostToolUse", "Stop"},
         {"SessionStart"},
         Layout::namedBlock,
         false,
         "command",
         "timeout"},
    };
    return all;
}

// The hook entries of a template, after checking its top level.
std::vector<Entry> entriesOf(const TemplateCase& c, const json& doc) {
    EXPECT_EQ(doc.size(), c.versioned ? 2u : 1u) << "any other top-level key would overwrite the user's";
    if (c.versioned) {
        EXPECT_EQ(doc.at("version"), 1);
    }
    if (c.layout != Layout::namedBlock) return entriesOf(doc.at("hooks"), c.layout == Layout::groups);
    auto block = doc.at("tovrin");
    EXPECT_EQ(block.value("enabled", false), true);
    block.erase("enabled");
    // Tool events take matcher groups, the others flat lists of handlers.
    return entriesOf(block, false, {"PreToolUse", "PostToolUse"});
}

std::vector<std::string> words(const std::string& command) {
    std::istringstream in(command);
    std::vector<std::string> result;
    for (std::string w; in >> w;)
        result.push_back(w);
    return result;
}

TEST(TemplateFormat, EachTemplateIsInItsAgentsFormat) {
    for (const auto& c : cases()) {
        SCOPED_TRACE(c.name);
        const json doc = json::parse(test::readText(kAdapters / "configs" / (c.name + ".json")));
        std::set<std::string> registered;
        for (const auto& [event, entry] : entriesOf(c, doc)) {
            SCOPED_TRACE(event);
            registered.insert(event);
            EXPECT_TRUE(c.agentEvents.count(event)) << "not an event of this agent";
            if (c.typed) {
                EXPECT_EQ(entry.value("type", ""), "command");
            }
            if (c.timeoutKey) {
                EXPECT_TRUE(entry.at(c.timeoutKey).is_number_integer());
                EXPECT_GE(entry.at(c.timeoutKey).get<int>(), 1);
            }
            c.extra(entry);
            // The placeholder is the program word; the agent's event goes along as given.
            const auto w = words(entry.at(c.commandKey).get<std::string>());
            ASSERT_EQ(w.size(), 3u);
            EXPECT_EQ(w[0], HookTemplateRenderer::placeholder);
            EXPECT_EQ(w[1], c.tool);
            EXPECT_EQ(w[2], event);
        }
        for (const auto& event : c.requiredEvents)
            EXPECT_TRUE(registered.count(event)) << event;
    }
}

TEST(TemplateFormat, RenderedTemplatesMergeInAndOutUnderTheirTargetsStrategy) {
    const std::string writerPath = "/home/o'neil/.tovrin/agent-status.sh";
    const auto writer = HookTemplateRenderer::shellQuoted(writerPath);
    const HookOwnership owner(writerPath);
    for (const auto& target : HookTarget::all("/home/o'neil")) {
        SCOPED_TRACE(target.id);
        const json rendered = HookTemplateRenderer::substitute(
            json::parse(test::readText(kAdapters / "configs" / (target.templateName + ".json"))), writer);
        EXPECT_EQ(rendered.dump().find(HookTemplateRenderer::placeholder), std::string::npos);
        // Our own files hold nothing else.
        const json foreign = target.strategy.kind == MergeStrategy::Kind::dedicatedFile
                                 ? json::object()
                                 : json{{"hooks", {{"Mine", json::array({1})}}}, {"model", "x"}};
        const auto merged = HookConfigMerger::merge(rendered, foreign, target.strategy, owner);
        ASSERT_TRUE(merged.ok()) << merged.error();
        EXPECT_TRUE(HookConfigMerger::isInstalled(merged.value(), target.strategy, owner));
        json expected = foreign;
        if (target.strategy.kind == MergeStrategy::Kind::flat) expected["version"] = 1;
        EXPECT_EQ(HookConfigMerger::remove(merged.value(), target.strategy, owner), expected);
    }
}

} // namespace
} // namespace tovrin
