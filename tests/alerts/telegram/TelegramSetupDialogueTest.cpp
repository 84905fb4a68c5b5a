#include "alerts/telegram/TelegramSetupDialogue.h"

#include "alerts/telegram/TelegramError.h"
#include "support/FakeTelegramPorts.h"
#include "support/MemoryDefaultsStore.h"

#include <deque>
#include <functional>
#include <gtest/gtest.h>
#include <sstream>

namespace tovrin {
namespace {

class TelegramSetupDialogueTest : public ::testing::Test {
protected:
    // Runs the dialogue on typed lines; each wait for Telegram takes the next answer.
    int converse(const std::string& typed) {
        std::istringstream in(typed);
        return TelegramSetupDialogue(model, preferences, in, out,
                                     [&] {
                                         ASSERT_FALSE(answers.empty()) << "a request nobody answers";
                                         answers.front()();
                                         answers.pop_front();
                                     })
            .run();
    }
    std::vector<std::string> operations() const {
        std::vector<std::string> names;
        for (const auto& call : messenger.calls)
            names.push_back(call.operation);
        return names;
    }

    MemoryDefaultsStore defaults;
    PreferencesStore preferences{defaults};
    test::MemorySecrets secrets;
    test::FakeMessenger messenger;
    TelegramSettingsViewModel model{messenger, secrets, preferences};
    std::deque<std::function<void()>> answers;
    std::ostringstream out;
};

TEST_F(TelegramSetupDialogueTest, WalksThroughVerifyLinkAndTestAskingAgainUntilTheBotHasAMessage) {
    answers = {[&] { messenger.succeed<std::string>("@helper_bot"); },
               [&] { messenger.fail(TelegramError::noChat()); },
               [&] {
                   messenger.succeed(TelegramChat{-1001, "Ops room", std::nullopt, std::nullopt});
               },
               [&] { messenger.succeedSending(); }};
    EXPECT_EQ(converse("y\n 123:ABC \n\n\n\n"), 0) << out.str();

    EXPECT_EQ(operations(),
              (std::vector<std::string>{"verifyBot", "discoverChat", "discoverChat", "sendMessage"}));
    EXPECT_EQ(messenger.calls[0].token, "123:ABC");
    EXPECT_EQ(messenger.calls[3].chatID, "-1001");
    EXPECT_TRUE(preferences.telegramEnabled());
    const std::string said = out.str();
    EXPECT_NE(said.find("@helper_bot\n"), std::string::npos) << said;
    EXPECT_NE(said.find("No message to your bot has arrived yet.\n"), std::string::npos) << said;
    EXPECT_NE(said.find("Ops room\n"), std::string::npos) << said;
    // A terminal has no buttons to press.
    EXPECT_EQ(said.find("Verify token"), std::string::npos) << said;
    EXPECT_EQ(said.find("Link chat"), std::string::npos) << said;
}

TEST_F(TelegramSetupDialogueTest, StopsAtARefusalARejectedTokenOrTheEndOfInput) {
    preferences.telegramEnabled.set(true);
    EXPECT_EQ(converse("no\n"), 0);
    EXPECT_FALSE(preferences.telegramEnabled()) << "declining turns the messages off";
    EXPECT_TRUE(messenger.calls.empty());

    EXPECT_EQ(converse(""), 1) << "no answer to the first question";
    EXPECT_EQ(converse("\n\n"), 1) << "no token typed and none stored";
    EXPECT_TRUE(messenger.calls.empty());

    answers = {[&] { messenger.fail(TelegramError::unauthorized()); }};
    EXPECT_EQ(converse("\nbad\n"), 1);
    EXPECT_EQ(operations(), std::vector<std::string>{"verifyBot"}) << "nothing more after a rejection";
    EXPECT_NE(out.str().find(TelegramError::unauthorized().description()), std::string::npos) << out.str();

    // A stored token is offered, and Enter keeps it.
    secrets.values = {{TelegramSecretKeys::botToken, "stored:T"}};
    model.load();
    answers = {[&] { messenger.fail(TelegramError::transport("offline")); }};
    EXPECT_EQ(converse("y\n\n"), 1);
    EXPECT_NE(out.str().find("Bot token (Enter keeps the stored one): "), std::string::npos);
    EXPECT_EQ(messenger.calls.back().token, "stored:T");
}

} // namespace
} // namespace tovrin
