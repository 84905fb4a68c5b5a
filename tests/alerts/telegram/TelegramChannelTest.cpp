#include "alerts/telegram/TelegramChannel.h"

#include "support/FakeTelegramPorts.h"
#include "support/MemoryDefaultsStore.h"
#include "support/SampleSessions.h"

#include <gtest/gtest.h>

namespace tovrin {
namespace {

AgentSession waiting(const std::string& tool, const std::string& id) {
    auto s = test::session(tool, id, SessionState::waiting, TimePoint{});
    s.root = "/home/a/" + id;
    return s;
}

// Switched on, with a token and a linked chat.
struct Rig {
    Rig() {
        preferences.telegramEnabled.set(true);
        secrets.values = {{TelegramSecretKeys::botToken, "T0K"}, {TelegramSecretKeys::chatID, "-1001"}};
    }

    MemoryDefaultsStore defaults;
    PreferencesStore preferences{defaults};
    test::MemorySecrets secrets;
    test::FakeMessenger messenger;
    TelegramChannel channel{messenger, secrets, preferences};
    std::vector<AgentSession> one{waiting("claude-code", "proj")};
};

class TelegramChannelTest : public ::testing::Test, protected Rig {};

TEST_F(TelegramChannelTest, OneMessageNamingOnlyTheNewlyWaiting) {
    const std::vector<AgentSession> all{waiting("codex-cli", "b"), waiting("some-new-tool", "c"), one[0]};
    channel.notifyWaiting(all, all);
    channel.notifyWaiting(one, all);
    ASSERT_EQ(messenger.calls.size(), 2u);
    EXPECT_EQ(messenger.calls[0].operation, "sendMessage");
    EXPECT_EQ(messenger.calls[0].token, "T0K");
    EXPECT_EQ(messenger.calls[0].chatID, "-1001");
    EXPECT_EQ(messenger.calls[0].text, "3 agents are waiting\nCodex, some-new-tool, Claude Code");
    EXPECT_EQ(messenger.calls[1].text, "Claude Code is waiting\nproj");
}

TEST_F(TelegramChannelTest, SendsNothingWithoutEverythingItNeeds) {
    struct Row {
        const char* name;
        std::function<void(Rig&)> change;
    };
    const std::vector<Row> rows = {
        {"switched off", [](auto& t) { t.preferences.telegramEnabled.set(false); }},
        {"no token", [](auto& t) { t.secrets.values.erase(TelegramSecretKeys::botToken); }},
        {"empty token", [](auto& t) { t.secrets.values[TelegramSecretKeys::botToken] = ""; }},
        {"no chat linked", [](auto& t) { t.secrets.values.erase(TelegramSecretKeys::chatID); }},
        {"empty chat id", [](auto& t) { t.secrets.values[TelegramSecretKeys::chatID] = ""; }},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        Rig fresh;
        row.change(fresh);
        fresh.channel.notifyWaiting(fresh.one, fresh.one);
        EXPECT_TRUE(fresh.messenger.calls.empty());
    }
    channel.notifyWaiting({}, one);
    EXPECT_TRUE(messenger.calls.empty());
}

TEST_F(TelegramChannelTest, RemindersNeverReachTelegram) {
    preferences.repeatReminderEnabled.set(true);
    channel.remindWaiting(one);
    EXPECT_TRUE(messenger.calls.empty());
}

TEST_F(TelegramChannelTest, ReadsTheSecretsAfreshAtEachAlertAndDropsFailures) {
    channel.notifyWaiting(one, one);
    messenger.fail(TelegramError::unauthorized());
    secrets.values[TelegramSecretKeys::botToken] = "NEW";
    secrets.values[TelegramSecretKeys::chatID] = "42";
    channel.notifyWaiting(one, one);
    ASSERT_EQ(messenger.calls.size(), 2u);
    EXPECT_EQ(messenger.calls[1].token, "NEW");
    EXPECT_EQ(messenger.calls[1].chatID, "42");
}

} // namespace
} // namespace tovrin
