#include "ui/viewmodels/StatusReport.h"

#include "core/Iso8601.h"
#include "support/SampleSessions.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>
#include <set>
#include <sstream>

namespace tovrin {
namespace {

using nlohmann::json;

const TimePoint now = std::chrono::sys_days(std::chrono::year{2026} / 3 / 14) + std::chrono::hours(9);
const std::string dot = " \u00B7 ";

AgentSession sample(const std::string& id, SessionState state, double age = 30) {
    return test::session("claude-code", id, state, addSeconds(now, -age));
}

// The text as groups: a heading line, then two lines per session (title, then details).
struct Group {
    std::string heading;
    std::vector<std::string> titles;
    std::vector<std::string> details;
};

std::vector<Group> groupsOf(const std::string& text) {
    std::vector<Group> groups;
    std::istringstream in(text);
    for (std::string line; std::getline(in, line);) {
        if (line.empty()) continue;
        if (line.starts_with("    ")) {
            if (!groups.empty()) groups.back().details.push_back(line.substr(4));
        } else if (line.starts_with("  ")) {
            if (!groups.empty()) groups.back().titles.push_back(line.substr(2));
        } else {
            groups.push_back({line, {}, {}});
        }
    }
    return groups;
}

TEST(StatusReportText, GroupsWaitingThenWorkingThenIdleInListOrderAndLeavesEmptyGroupsOut) {
    const auto groups =
        groupsOf(StatusReport::text({sample("i1", SessionState::idle), sample("w1", SessionState::waiting),
                                     sample("i2", SessionState::idle), sample("w2", SessionState::waiting)},
                                    now));
    ASSERT_EQ(groups.size(), 2u);
    EXPECT_EQ(groups[0].titles, (std::vector<std::string>{"Session w1", "Session w2"}));
    EXPECT_NE(groups[0].heading.find("(2)"), std::string::npos) << groups[0].heading;
    EXPECT_EQ(groups[1].titles, (std::vector<std::string>{"Session i1", "Session i2"}));

    const auto all =
        groupsOf(StatusReport::text({sample("i", SessionState::idle), sample("k", SessionState::working),
                                     sample("w", SessionState::waiting)},
                                    now));
    ASSERT_EQ(all.size(), 3u);
    EXPECT_EQ(all[0].titles, std::vector<std::string>{"Session w"});
    EXPECT_EQ(all[1].titles, std::vector<std::string>{"Session k"});
    EXPECT_EQ(all[2].titles, std::vector<std::string>{"Session i"});
    EXPECT_NE(all[0].heading.find("(1)"), std::string::npos) << all[0].heading;

    EXPECT_EQ(StatusReport::text({}, now), "No agents are stirring.\n") << "no groups at all is one line";
}

TEST(StatusReportText, DetailsAreToolThenReasonOnlyWhenPresentThenProjectThenAge) {
    auto noReason = sample("a", SessionState::working, 150);
    auto emptyReason = sample("b", SessionState::working, 150);
    emptyReason.reason = "";
    auto withReason = sample("c", SessionState::working, 150);
    withReason.reason = "Claude needs your permission to use Bash";
    withReason.root = "/home/dev/projects";
    auto unknownTool = sample("d", SessionState::working, 2);
    unknownTool.tool = "gemini-cli";
    unknownTool.host = "dev@build";

    const auto groups = groupsOf(StatusReport::text({noReason, emptyReason, withReason, unknownTool}, now));
    ASSERT_EQ(groups.size(), 1u);
    EXPECT_EQ(groups[0].details,
              (std::vector<std::string>{
                  "Claude Code" + dot + "/home/dev/projects/a" + dot + "2m ago",
                  "Claude Code" + dot + dot + "/home/dev/projects/b" + dot + "2m ago",
                  "Claude Code" + dot + *withReason.reason + dot + "/home/dev/projects" + dot + "2m ago",
                  "gemini-cli" + dot + "dev@build:/home/dev/projects/d" + dot + "just now",
              }));
}

TEST(StatusReportText, HostsOutOfReachAreNamedWithTheirReasonWhichCannotDriveTheTerminal) {
    EXPECT_EQ(StatusReport::unreachable({}), "");
    EXPECT_EQ(
        StatusReport::unreachable({{"dev@build", "Connection refused\x1b[2J"}, {"box", ""}}),
        "\n! dev@build can't be reached: Connection refused [2J; its sessions stay until they age out.\n"
        "\n! box can't be reached; its sessions stay until they age out.\n");
}

TEST(StatusReportText, ControlCharactersFromTheAgentCannotReachTheTerminal) {
    auto s = sample("x", SessionState::waiting);
    s.title = "first\nsecond\x1b[2J\tthird\x7f";
    s.reason = "ask\r\x1b]0;pwned\x07";
    s.root = "/tmp/\x1b[31mred";
    s.tool = "evil\x1b[H";
    auto c1 = sample("y", SessionState::waiting);
    c1.title = "csi\u009b31m naïve 日本"; // C1 controls are controls too; other non-ASCII text stays

    const auto text = StatusReport::text({s, c1}, now);
    for (const char c : text) {
        const auto byte = static_cast<unsigned char>(c);
        EXPECT_TRUE(byte == '\n' || (byte >= 0x20 && byte != 0x7f)) << "byte " << int(byte);
    }
    EXPECT_EQ(text.find("\u009b"), std::string::npos);
    const auto groups = groupsOf(text);
    ASSERT_EQ(groups.size(), 1u);
    EXPECT_EQ(groups[0].titles.size(), 2u);
    EXPECT_EQ(groups[0].details.size(), 2u);
    EXPECT_NE(groups[0].titles[1].find("naïve 日本"), std::string::npos);
}

TEST(StatusReportText, BidirectionalControlsBecomeBlanksSoNoTextCanShowReordered) {
    const struct {
        std::string in, out;
    } cases[] = {
        {"evil\u202Etxt.exe", "evil txt.exe"},
        {"\u202A\u202B\u202C\u202D\u202E", "     "},
        {"\u2066a\u2067b\u2068c\u2069", " a b c "},
        {"\u200E\u200F\u061C", "   "},
        // Their neighbours in UTF-8 are text (U+200D joins emoji), and so is a sequence cut short.
        {"\u200D\u2010\u2029\u202F\u2065\u206A\u061B\u061D",
         "\u200D\u2010\u2029\u202F\u2065\u206A\u061B\u061D"},
        {"cut \xE2\x80", "cut \xE2\x80"},
        {"cut \xC2", "cut \xC2"},
    };
    for (const auto& c : cases)
        EXPECT_EQ(StatusReport::printable(c.in), c.out) << c.in;
}

TEST(StatusReportJson, ObjectsCarryTheStatusKeysInListOrderAndLeaveAbsentOnesOut) {
    auto full = sample("full", SessionState::waiting);
    full.tool = "codex-cli";
    full.pid = 4242;
    full.reason = "";
    full.transcriptPath = "/home/dev/.codex/t.jsonl";
    full.root = "/home/dev/projects";
    full.locator.emplace();
    full.locator->tmuxPane = "%3";
    full.locator->app = "Terminal";
    full.host = "dev@build";
    const auto bare = sample("bare", SessionState::idle);

    const auto list = json::parse(StatusReport::json({full, bare}));
    ASSERT_EQ(list.size(), 2u);
    const auto keys = [](const json& object) {
        std::set<std::string> names;
        for (const auto& [key, value] : object.items())
            names.insert(key);
        return names;
    };
    const std::set<std::string> required{"id",    "schemaVersion", "tool",  "surface",   "sessionId",
                                         "state", "cwd",           "title", "startedAt", "updatedAt"};
    auto withOptionals = required;
    withOptionals.insert({"pid", "reason", "transcriptPath", "root", "locator", "host"});
    EXPECT_EQ(keys(list[0]), withOptionals);
    EXPECT_EQ(keys(list[1]), required);

    EXPECT_EQ(list[0]["id"], "dev@build:codex-cli__full");
    EXPECT_EQ(list[0]["host"], "dev@build");
    EXPECT_EQ(list[0]["state"], "waiting");
    EXPECT_EQ(list[0]["pid"], 4242);
    EXPECT_EQ(list[0]["reason"], "");
    EXPECT_EQ(list[0]["locator"], (json{{"tmuxPane", "%3"}, {"app", "Terminal"}}));
    EXPECT_EQ(list[1]["id"], "claude-code__bare");
    EXPECT_EQ(list[1]["state"], "idle");

    for (const char* key : {"startedAt", "updatedAt"}) {
        const auto date = list[1][key].get<std::string>();
        EXPECT_TRUE(date.ends_with("Z")) << date;
        EXPECT_EQ(parseIso8601(date), key == std::string("startedAt") ? bare.startedAt : bare.updatedAt);
    }
    EXPECT_EQ(json::parse(StatusReport::json({})), json::array());
}

TEST(StatusReportJson, StaysValidWhateverTheTitleHolds) {
    auto s = sample("q", SessionState::working);
    const std::vector<std::string> titles = {"say \"hi\" \\ back", "two\nlines\ttab\x01", "naïve 日本 🚀"};
    for (const auto& title : titles) {
        s.title = title;
        const auto list = json::parse(StatusReport::json({s}));
        EXPECT_EQ(list.at(0).at("title"), title);
    }
    s.title = "broken \xff\xfe utf-8";
    const auto list = json::parse(StatusReport::json({s}));
    EXPECT_TRUE(list.at(0).at("title").get<std::string>().starts_with("broken "));
}

} // namespace
} // namespace tovrin
