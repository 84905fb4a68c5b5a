#include "ui/viewmodels/SessionRowText.h"

#include "support/SampleSessions.h"
#include "ui/viewmodels/ForgePalette.h"

#include <gtest/gtest.h>

namespace tovrin {
namespace {

class SessionRowTextTest : public ::testing::Test {
protected:
    AgentSession make(const std::string& tool, double secondsAgo) {
        return test::session(tool, "s1", SessionState::waiting, addSeconds(now, -secondsAgo));
    }
    TimePoint now = std::chrono::system_clock::from_time_t(1'800'000'000);
};

TEST_F(SessionRowTextTest, SubtitleJoinsToolReasonAndAge) {
    auto session = make("claude-code", 42);
    EXPECT_EQ(SessionRowText::subtitle(session, now), "Claude Code \u00B7 42s ago");

    session.reason = "Permission to edit main.cpp";
    EXPECT_EQ(SessionRowText::subtitle(session, now),
              "Claude Code \u00B7 Permission to edit main.cpp \u00B7 42s ago");

    // Present but empty still holds its place between two separators.
    session.reason = "";
    EXPECT_EQ(SessionRowText::subtitle(session, now), "Claude Code \u00B7  \u00B7 42s ago");

    // An unknown tool goes by its id; a stamp from the future is "just now".
    EXPECT_EQ(SessionRowText::subtitle(make("aider", -30), now), "aider \u00B7 just now");
    EXPECT_EQ(SessionRowText::subtitle(make("codex-cli", 3600), now), "Codex \u00B7 1h ago");

    // A remote session says where it runs, also to a screen reader.
    auto remote = make("codex-cli", 42);
    remote.host = "dev@build";
    EXPECT_EQ(SessionRowText::subtitle(remote, now), "Codex on dev@build \u00B7 42s ago");
    EXPECT_NE(SessionRowText::accessibleName(remote, now).find("Codex on dev@build"), std::string::npos);
}

TEST_F(SessionRowTextTest, TitleColourFollowsTheState) {
    EXPECT_EQ(SessionRowText::titleColor(SessionState::waiting), ForgeTheme::waitingRed);
    EXPECT_EQ(SessionRowText::titleColor(SessionState::working), ForgeTheme::workingAmber);
    EXPECT_EQ(SessionRowText::titleColor(SessionState::idle), ForgeTheme::ash);
}

} // namespace
} // namespace tovrin
