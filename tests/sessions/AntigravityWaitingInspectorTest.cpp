#include "sessions/AntigravityWaitingInspector.h"

#include "sessions/SessionStore.h"
#include "support/FakeSessionReader.h"
#include "support/ManualLoop.h"
#include "support/MemoryDefaultsStore.h"
#include "support/SampleSessions.h"
#include "support/TempDir.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>
#include <optional>

namespace tovrin {
namespace {

using Inspector = AntigravityWaitingInspector;

std::string entry(const std::string& type, const nlohmann::json& content) {
    return nlohmann::json{{"type", type}, {"content", content}}.dump();
}
std::string planner(const std::string& content) {
    return entry("PLANNER_RESPONSE", content);
}

TEST(AntigravityWaitingInspector, TellsQuestionsFromStatements) {
    struct Case {
        const char* name;
        std::string message;
        bool question;
    };
    const std::vector<Case> cases{
        {"closing question", "I looked at the failing test.\nShall I fix it now?", true},
        {"closing question, blank lines and trailing blanks after it", "Proceed? \t\n\n   \n", true},
        {"question followed by bullets", "Ready to go ahead?\n- run the migration\n- restart the server",
         true},
        {"question in the middle, plain close", "Did the build pass? I checked.\nAll tests are green now.",
         false},
        {"question in the middle, options and a phrase", "Did it pass?\n1. Retry\n2. Skip\nLet me know.",
         true},
        {"two numbered lines and Which one", "Two ways:\n1. Keep the cache\n2. Drop it\nWhich one fits.",
         true},
        {"two numbered lines, no phrase", "Done. Changes:\n1. Renamed the module\n2. Fixed imports", false},
        {"one option line and pick one", "Pick one and I go on:\n- Keep the cache", false},
        {"phrase in capitals", "Two routes:\n* A\n+ B\nWOULD YOU LIKE ME TO START.", true},
        {"phrase before the options", "Your call between these:\n1) Merge\n2) Rebase", true},
        {"-word is a sentence, not an option", "Anything else?\n-nothing", false},
        {"- word is an option", "Anything else?\n- nothing", true},
        {"1 is not an option", "Anything else?\n1 more thing", false},
        {"1.word is not an option", "Anything else?\n1.x", false},
        {"12) x is an option", "Anything else?\n12) x", true},
        {"other number characters", "Anything else?\n\u0661) yes\n\u00b2. no", true},
        {"indented option", "Anything else?\n   - nothing", true},
        {"CRLF lines", "Options:\r\n1. a\r\n2. b\r\nSelect one.", true},
        {"empty", "", false},
    };
    for (const auto& c : cases)
        EXPECT_EQ(Inspector::looksLikeQuestion(c.message), c.question) << c.name;
}

TEST(AntigravityWaitingInspector, FindsTheLastPlannerMessageWithText) {
    const std::string ls = "\u2028";
    struct Case {
        const char* name;
        std::string jsonl;
        std::optional<std::string> message;
    };
    const std::vector<Case> cases{
        {"a later blank message is ignored", planner("first") + "\n" + planner(" \n\t ") + "\n", "first"},
        {"other types after it don't matter",
         planner("ask") + "\n" + entry("USER_INPUT", "later") + "\n" + entry("TOOL_CALL", 3) + "\n", "ask"},
        {"the cut first line of a tail is skipped",
         "E\",\"content\":\"from a cut line\"}\n" + planner("whole") + "\n", "whole"},
        {"a cut line alone gives nothing", "SPONSE\",\"content\":\"from a cut line\"}", std::nullopt},
        {"CR LF and U+2028 separate lines",
         planner("one") + "\r\n" + planner("two") + ls + planner("three") + "\r\n", "three"},
        {"content comes back untrimmed", planner("  keep me \n"), "  keep me \n"},
        {"type must match exactly", planner("kept") + "\n" + entry("planner_response", "no"), "kept"},
        {"content must be a string", planner("kept") + "\n" + entry("PLANNER_RESPONSE", 42), "kept"},
        {"no object, no message", "[1,2]\n\"PLANNER_RESPONSE\"\n\n", std::nullopt},
    };
    for (const auto& c : cases)
        EXPECT_EQ(Inspector::lastPlannerMessage(c.jsonl), c.message) << c.name;
}

TEST(AntigravityWaitingInspector, ReadsOnlyTheTailOfAFileEvenCutInsideACharacter) {
    test::TempDir dir;
    EXPECT_EQ(Inspector::readTail((dir.path() / "missing.jsonl").string(), 1024), std::nullopt);
    EXPECT_EQ(Inspector::readTail(dir.write("empty.jsonl", "").string(), 1024), std::nullopt);

    const std::string last = planner("Prêt à continuer ?") + "\n" + entry("USER_INPUT", "x") + "\n";
    const std::string content = planner(std::string(5000, 'x') + "é") + "\n" + last;
    const auto path = dir.write("t.jsonl", content).string();
    EXPECT_EQ(Inspector::readTail(path, content.size() + 1), content);

    // Cut into the first line, which is then skipped.
    const std::size_t intoFirstLine = content.size() - last.size() - 40;
    auto tail = Inspector::readTail(path, content.size() - intoFirstLine);
    ASSERT_TRUE(tail);
    EXPECT_EQ(*tail, content.substr(intoFirstLine));
    EXPECT_EQ(Inspector::lastPlannerMessage(*tail), "Prêt à continuer ?");
    // Cut inside a character: its lone second byte reads as a replacement character.
    const std::size_t insideCharacter = content.find("é") + 1;
    tail = Inspector::readTail(path, content.size() - insideCharacter);
    ASSERT_TRUE(tail);
    EXPECT_EQ(*tail, "\uFFFD" + content.substr(insideCharacter + 1));
    EXPECT_EQ(Inspector::lastPlannerMessage(*tail), "Prêt à continuer ?");
}

// The inspection as one step of a pass.
class SilentAntigravityTest : public ::testing::Test {
protected:
    SessionState classify(const std::string& tool, double age, const std::optional<std::string>& transcript,
                          SessionState file = SessionState::working) {
        auto s = test::session(tool, "s", file, addSeconds(loop.clock().now(), -age));
        s.transcriptPath = transcript;
        reader.set({s});
        store.refresh();
        return store.sessions().at(0).state;
    }

    test::TempDir dir;
    const std::string asking =
        dir.write("asking.jsonl", planner("Shall I run the migration?") + "\n").string();
    const std::string telling = dir.write("telling.jsonl", planner("Migration done.") + "\n").string();
    const std::string unrelated = dir.write("none.jsonl", entry("USER_INPUT", "go") + "\n").string();
    test::ManualLoop loop;
    MemoryDefaultsStore defaults;
    PreferencesStore preferences{defaults};
    test::FakeSessionReader reader;
    SessionStore store{reader, preferences, {}, nullptr, loop, loop.clock()};
};

TEST_F(SilentAntigravityTest, OnlySilentWorkingAntigravitySessionsWithATranscriptAreInspected) {
    using enum SessionState;
    struct Case {
        const char* name;
        std::string tool;
        double age;
        std::optional<std::string> transcript;
        bool flagSilentWorking;
        SessionState shown;
        SessionState file = working;
    };
    const std::vector<Case> cases{
        {"not yet silent", "antigravity-cli", 45, asking, false, working},
        {"silent, asking", "antigravity-cli", 46, asking, false, waiting},
        {"the editor variant", "antigravity-ide", 46, asking, false, waiting},
        {"silent, telling", "antigravity-cli", 46, telling, true, idle},
        {"no planner message", "antigravity-cli", 46, unrelated, true, idle},
        {"missing transcript", "antigravity-cli", 46, dir.path().string() + "/gone.jsonl", true, idle},
        {"another tool", "claude-code", 46, asking, true, working},
        {"empty path, flag on", "antigravity-cli", 46, "", true, working},
        {"empty path, flag off", "antigravity-cli", 46, "", false, idle},
        {"no path", "antigravity-cli", 46, std::nullopt, true, working},
        {"asking still decays", "antigravity-cli", 301, asking, true, idle},
        {"only working files", "antigravity-cli", 100, telling, false, waiting, waiting},
    };
    for (const auto& c : cases) {
        preferences.flagSilentWorking.set(c.flagSilentWorking);
        EXPECT_EQ(classify(c.tool, c.age, c.transcript, c.file), c.shown) << c.name;
    }
}

TEST_F(SilentAntigravityTest, TheTranscriptIsReadAgainAtEveryPass) {
    EXPECT_EQ(classify("antigravity-cli", 60, asking), SessionState::waiting);
    dir.write("asking.jsonl", planner("Shall I run the migration?") + "\n" + planner("Ran it.") + "\n");
    EXPECT_EQ(classify("antigravity-cli", 60, asking), SessionState::idle);
}

} // namespace
} // namespace tovrin
