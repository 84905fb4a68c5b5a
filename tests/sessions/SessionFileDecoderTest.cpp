#include "sessions/SessionFileDecoder.h"

#include "core/Iso8601.h"
#include "support/SampleSessions.h"

#include <functional>
#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace tovrin {
namespace {

using Json = nlohmann::ordered_json;

const TimePoint kUpdated = *parseIso8601("2026-11-22T10:00:00Z");

Json baseFile() {
    return test::statusFile("claude-code", "s1", SessionState::waiting, kUpdated);
}

std::optional<AgentSession> decodeJson(const Json& json) {
    SessionFileDecoder decoder;
    return decoder.decode(json.dump());
}

TEST(SessionFileDecoderTest, DecodesEveryFieldOfAFullFile) {
    Json json = baseFile();
    json["pid"] = 4242;
    json["reason"] = "Permission needed";
    json["transcriptPath"] = "/home/dev/.agent/t.jsonl";
    json["root"] = "/home/dev/projects";
    json["locator"] = {{"termProgram", "kitty"}, {"tmuxPane", "%3"},    {"itermSession", "w0t1p0"},
                       {"weztermPane", "7"},     {"tty", "/dev/pts/4"}, {"app", "Terminal"}};
    json["startedAt"] = "2026-11-22T10:30:00+01:00"; // 09:30Z: offsets are honoured

    AgentSession expected = test::session("claude-code", "s1", SessionState::waiting, kUpdated);
    expected.pid = 4242;
    expected.reason = "Permission needed";
    expected.transcriptPath = "/home/dev/.agent/t.jsonl";
    expected.root = "/home/dev/projects";
    expected.locator = Locator{"kitty", "%3", "w0t1p0", "7", "/dev/pts/4", "Terminal"};
    expected.startedAt = *parseIso8601("2026-11-22T09:30:00Z");
    EXPECT_TRUE(decodeJson(json) == expected);
}

// Files that differ from the minimal one only where the record may: each decodes to the minimal
// record with at most the one field changed.
TEST(SessionFileDecoderTest, AcceptsTheMinimalFileAndWhatItMayLeaveOutOrAdd) {
    struct Accepted {
        std::string name;
        std::function<void(Json&)> edit;
        std::function<void(AgentSession&)> expect = [](AgentSession&) {};
    };
    std::vector<Accepted> cases = {{"the minimal file", [](Json&) {}}};
    for (const char* key : {"pid", "reason", "transcriptPath", "root", "locator"})
        cases.push_back({std::string(key) + " null is absent", [key](Json& j) { j[key] = nullptr; }});
    for (const auto state : {SessionState::working, SessionState::idle})
        cases.push_back({"state " + std::string(rawValue(state)),
                         [state](Json& j) { j["state"] = std::string(rawValue(state)); },
                         [state](AgentSession& s) { s.state = state; }});
    // Liveness then counts it as dead: see ProcessLivenessTest.
    cases.push_back({"a pid beyond 32 bits is kept whole", [](Json& j) { j["pid"] = 4294967297ll; },
                     [](AgentSession& s) { s.pid = 4294967297ll; }});
    cases.push_back({"an empty locator differs from none", [](Json& j) { j["locator"] = Json::object(); },
                     [](AgentSession& s) { s.locator = Locator{}; }});
    cases.push_back({"null locator fields are absent, unknown ones ignored",
                     [](Json& j) {
                         j["locator"] = {{"tty", nullptr}, {"app", "Cursor"}, {"kittyWindow", 12}};
                     },
                     [](AgentSession& s) { s.locator.emplace().app = "Cursor"; }});
    cases.push_back({"a newer schema with unknown keys",
                     [](Json& j) {
                         j["schemaVersion"] = 99;
                         j["futureField"] = {{"nested", Json::array({1, "two", nullptr})}};
                     },
                     [](AgentSession& s) { s.schemaVersion = 99; }});
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        Json json = baseFile();
        c.edit(json);
        auto expected = test::session("claude-code", "s1", SessionState::waiting, kUpdated);
        c.expect(expected);
        EXPECT_TRUE(decodeJson(json) == expected) << json.dump();
    }
}

struct Case {
    std::string name;
    std::function<void(Json&)> edit;
};

std::vector<Case> rejectedCases() {
    std::vector<Case> cases;
    const std::vector<std::string> requiredStrings = {"tool", "surface", "sessionId", "state",
                                                      "cwd",  "title",   "startedAt", "updatedAt"};
    for (const auto& key : requiredStrings) {
        cases.push_back({key + " missing", [key](Json& j) { j.erase(key); }});
        cases.push_back({key + " null", [key](Json& j) { j[key] = nullptr; }});
        cases.push_back({key + " as number", [key](Json& j) { j[key] = 1; }});
        cases.push_back({key + " as array", [key](Json& j) { j[key] = Json::array({j[key]}); }});
    }
    cases.push_back({"schemaVersion missing", [](Json& j) { j.erase("schemaVersion"); }});
    cases.push_back({"schemaVersion null", [](Json& j) { j["schemaVersion"] = nullptr; }});
    cases.push_back({"schemaVersion as string", [](Json& j) { j["schemaVersion"] = "1"; }});
    cases.push_back({"schemaVersion fractional", [](Json& j) { j["schemaVersion"] = 1.5; }});
    cases.push_back({"schemaVersion as bool", [](Json& j) { j["schemaVersion"] = true; }});

    cases.push_back({"pid as string", [](Json& j) { j["pid"] = "123"; }});
    cases.push_back({"pid fractional", [](Json& j) { j["pid"] = 12.5; }});
    cases.push_back({"reason as number", [](Json& j) { j["reason"] = 7; }});
    cases.push_back({"transcriptPath as bool", [](Json& j) { j["transcriptPath"] = false; }});
    cases.push_back({"root as object", [](Json& j) { j["root"] = Json::object(); }});
    cases.push_back({"locator as array", [](Json& j) { j["locator"] = Json::array(); }});
    cases.push_back({"locator as string", [](Json& j) { j["locator"] = "tmux"; }});
    cases.push_back({"locator field as number", [](Json& j) { j["locator"] = {{"tmuxPane", 3}}; }});
    cases.push_back({"locator field as object", [](Json& j) { j["locator"] = {{"app", Json::object()}}; }});

    for (const char* word : {"thinking", "Working", "WAITING", " idle", ""}) {
        cases.push_back({std::string("state '") + word + "'", [word](Json& j) { j["state"] = word; }});
    }
    for (const char* date : {"2026-11-22T10:00:00.5Z", "2026-11-22T10:00:00.000+00:00", "2026-11-22T10:00:00",
                             "2026-11-22 10:00:00Z", "2026-11-22", "2026-13-22T10:00:00Z", "1700000000",
                             "4052-11-22T10:00:00Z", "0001-01-01T00:00:00Z"}) {
        cases.push_back(
            {std::string("updatedAt '") + date + "'", [date](Json& j) { j["updatedAt"] = date; }});
        cases.push_back(
            {std::string("startedAt '") + date + "'", [date](Json& j) { j["startedAt"] = date; }});
    }
    // Beyond int64 the value cannot be held: refused rather than wrapped or rounded.
    cases.push_back({"pid beyond int64", [](Json& j) { j["pid"] = 9223372036854775808ull; }});
    cases.push_back({"pid as exponent", [](Json& j) { j["pid"] = 1e30; }});
    return cases;
}

TEST(SessionFileDecoderTest, RefusesFilesThatBreakTheFormat) {
    for (const auto& c : rejectedCases()) {
        Json json = baseFile();
        c.edit(json);
        EXPECT_FALSE(decodeJson(json).has_value()) << c.name << ": " << json.dump();
    }
}

TEST(SessionFileDecoderTest, RefusesWhatIsNotOneObjectOfValidJson) {
    const std::string good = baseFile().dump();
    const std::vector<std::string> inputs = {
        "",
        "   ",
        "null",
        "42",
        "\"text\"",
        "[" + good + "]",
        good.substr(0, good.size() / 2),
        good + " {}",
        good + ",",
        "\xff\xfe{\"garbage",
        std::string(
            "{\"schemaVersion\":1,\"tool\":\"claude-code\",\"surface\":\"cli\",\"sessionId\":\"s\x80\","
            "\"state\":\"idle\",\"cwd\":\"/w\",\"title\":\"t\",\"startedAt\":\"2026-11-22T10:00:00Z\","
            "\"updatedAt\":\"2026-11-22T10:00:00Z\"}"),
    };
    SessionFileDecoder decoder;
    for (const auto& input : inputs)
        EXPECT_FALSE(decoder.decode(input).has_value()) << input;
    // The reused parser is not left in a bad state by what it refused.
    EXPECT_TRUE(decoder.decode(good).has_value());
}

} // namespace
} // namespace tovrin
