// The shipped hook templates: each in its agent's own format, each command running the writer
// with a tool id and an event that the agent has, and each fitting its merge strategy.

#include "hooks/HookConfigMerger.h"
#include "hooks/HookTarget.h"
#include "hooks/HookTemplateRenderer.h"
#include "support/TempDir.h"

#include <fstream>
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

struct TemplateCase {
    std::string name;
    std::set<std::string> tools;          // ids the commands may pass
    std::set<std::string> agentEvents;    // the agent's own event names
    std::set<std::string> requiredEvents; // start and end, where the agent has them
    std::function<std::vector<Entry>(const json&)> shape;
    std::function<void(const json&)> entry; // the keys each entry needs in this agent's format
};

void expectType(const json& entry) {
    EXPECT_EQ(entry.value("type", ""), "command");
}
void expectSeconds(const json& entry, const char* key) {
    EXPECT_TRUE(entry.at(key).is_number_integer());
    EXPECT_GE(entry.at(key).get<int>(), 1);
}

const std::vector<TemplateCase>& cases() {
    static const std::vector<TemplateCase> all = {
        {"claude-code",
         {"claude-code"},
         {"SessionStart", "SessionEnd", "UserPromptSubmit", "PreToolUse", "PermissionRequest", "PostToolUse",
          "PostToolUseFailure", "Notification", "Stop", "StopFailure", "SubagentStart", "PreCompact"},
         {"SessionStart", "SessionEnd"},
         [](const json& doc) {
             EXPECT_EQ(doc.size(), 1u);
             return entriesOf(doc.at("hooks"), true);
         },
         [](const json& e) {
             expectType(e);
             expectSeconds(e, "timeout");
             if (e.contains("async")) {
                 EXPECT_TRUE(e["async"].is_boolean());
             }
         }},
        {"codex",
         {"codex-cli"},
         {"SessionStart", "SessionEnd", "UserPromptSubmit", "PreToolUse", "PermissionRequest", "PostToolUse",
          "PreCompact", "Stop", "Interrupt"},
         {"SessionStart", "SessionEnd"},
         [](const json& doc) {
             EXPECT_EQ(doc.size(), 1u);
             return entriesOf(doc.at("hooks"), true);
         },
         [](const json& e) {
             expectType(e); // Codex requires the tag
             expectSeconds(e, "timeout");
             EXPECT_EQ(e.value("statusMessage", ""), "tovrin") << "the name the user is told to trust";
         }},
        {"copilot-cli",
         {"copilot-cli"},
         {"sessionStart", "sessionEnd", "userPromptSubmitted", "preToolUse", "postToolUse",
          "postToolUseFailure", "notification", "agentStop", "errorOccurred"},
         {"sessionStart", "sessionEnd"},
         [](const json& doc) {
             EXPECT_EQ(doc.at("version"), 1);
             EXPECT_EQ(doc.size(), 2u);
             return entriesOf(doc.at("hooks"), false);
         },
         [](const json& e) {
             expectType(e);
             EXPECT_TRUE(e.at("bash").is_string());
             expectSeconds(e, "timeoutSec");
         }},
        {"vscode",
         {"copilot-vscode"},
         {"SessionStart", "UserPromptSubmit", "PreToolUse", "PostToolUse", "SubagentStart", "Stop"},
         {"SessionStart"},
         [](const json& doc) {
             EXPECT_FALSE(doc.contains("version")) << "a numeric version makes VS Code read the CLI format";
             EXPECT_EQ(doc.size(), 1u);
             return entriesOf(doc.at("hooks"), false);
         },
         [](const json& e) {
             expectType(e);
             expectSeconds(e, "timeout");
         }},
        {"cursor",
         {"cursor-cli"},
         {"sessionStart", "sessionEnd", "beforeSubmitPrompt", "preToolUse", "postToolUse",
          "beforeShellExecution", "beforeMCPExecution", "afterFileEdit", "stop"},
         {"sessionStart", "sessionEnd"},
         [](const json& doc) {
             EXPECT_EQ(doc.at("version"), 1);
             EXPECT_EQ(doc.size(), 2u);
             return entriesOf(doc.at("hooks"), false);
         },
         [](const json& e) { EXPECT_TRUE(e.at("command").is_string()); }},
        {"antigravity",
         {"antigravity-cli"},
         {"SessionStart", "PreInvocation", "PreToolUse", "PostToolUse", "Stop"},
         {"SessionStart"},
         [](const json& doc) {
             EXPECT_EQ(doc.size(), 1u) << "any other top-level key would overwrite the user's";
             auto block = doc.at("tovrin");
             EXPECT_EQ(block.value("enabled", false), true);
             block.erase("enabled");
             // Tool events take matcher groups, the others flat lists of handlers.
             return entriesOf(block, false, {"PreToolUse", "PostToolUse"});
         },
         [](const json& e) {
             expectType(e);
             expectSeconds(e, "timeout");
         }},
    };
    return all;
}

std::vector<std::string> words(const std::string& command) {
    std::istringstream in(command);
    std::vector<std::string> result;
    for (std::string w; in >> w;)
        result.push_back(w);
    return result;
}

std::string commandOf(const json& entry) {
    if (entry.contains("command")) return entry["command"].get<std::string>();
    return entry.at("bash").get<std::string>();
}

TEST(TemplateFormat, EachTemplateIsInItsAgentsFormat) {
    for (const auto& c : cases()) {
        SCOPED_TRACE(c.name);
        const json doc = json::parse(test::readText(kAdapters / "configs" / (c.name + ".json")));
        std::set<std::string> registered;
        for (const auto& [event, entry] : c.shape(doc)) {
            SCOPED_TRACE(event);
            registered.insert(event);
            EXPECT_TRUE(c.agentEvents.count(event)) << "not an event of this agent";
            c.entry(entry);
            // The placeholder is the program word; the agent's event goes along as given.
            const auto w = words(commandOf(entry));
            ASSERT_EQ(w.size(), 3u);
            EXPECT_EQ(w[0], HookTemplateRenderer::placeholder);
            EXPECT_TRUE(c.tools.count(w[1])) << w[1];
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

TEST(TemplateFormat, EveryRenderedCommandRunsTheWriterQuietly) {
    // The writer installed under a path that needs quoting, run as the agents run hooks.
    test::TempDir home;
    const auto writer = home.path() / "my tools" / "agent-status.sh";
    fs::create_directories(writer.parent_path());
    fs::copy_file(kAdapters / "agent-status.sh", writer);
    fs::permissions(writer, fs::perms::owner_all);
    const auto quoted = HookTemplateRenderer::shellQuoted(writer.string());
    for (const auto& c : cases()) {
        const json rendered = HookTemplateRenderer::substitute(
            json::parse(test::readText(kAdapters / "configs" / (c.name + ".json"))), quoted);
        for (const auto& [event, entry] : c.shape(rendered)) {
            SCOPED_TRACE(c.name + " " + event);
            const auto out = home.path() / "out";
            const std::string shell = "env -i PATH=/usr/bin:/bin HOME=" + home.path().string() +
                                      " /bin/sh -c " + HookTemplateRenderer::shellQuoted(commandOf(entry)) +
                                      " </dev/null >" + out.string() + " 2>&1";
            EXPECT_EQ(std::system(shell.c_str()), 0);
            EXPECT_EQ(test::readText(out), c.name == "antigravity" && event == "PreToolUse" ? "{}\n" : "");
        }
    }
}

} // namespace
} // namespace tovrin
