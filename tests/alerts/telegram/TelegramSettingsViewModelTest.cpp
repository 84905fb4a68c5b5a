#include "alerts/telegram/TelegramSettingsViewModel.h"

#include "support/FakeTelegramPorts.h"
#include "support/MemoryDefaultsStore.h"

#include <gtest/gtest.h>

namespace tovrin {
namespace {

using Phase = TelegramSettingsViewModel::Phase;
using PK = Phase::Kind;
const std::string rejected = "Token rejected — double-check it with @BotFather.";

class TelegramSettingsViewModelTest : public ::testing::Test {
protected:
    TelegramSettingsViewModelTest() { preferences.telegramEnabled.set(true); }

    std::optional<std::string> stored(const std::string& key) const { return secrets.string(key); }
    // A verification of `token` that Telegram accepts under the label "@helper_bot".
    void verifyAs(const std::string& token) {
        model->botToken.set(token);
        model->verify();
        messenger.succeed<std::string>("@helper_bot");
    }

    MemoryDefaultsStore defaults;
    PreferencesStore preferences{defaults};
    test::MemorySecrets secrets;
    test::FakeMessenger messenger;
    std::unique_ptr<TelegramSettingsViewModel> model =
        std::make_unique<TelegramSettingsViewModel>(messenger, secrets, preferences);
};

// Only a token Telegram accepts is stored; a wrong one later leaves it in use, and reloading shows
// the stored token while the last outcome stays on screen.
TEST_F(TelegramSettingsViewModelTest, VerifyStoresOnlyAnAcceptedTrimmedTokenAndKeepsTheFieldAsTyped) {
    model->botToken.set("  123:ABC\n");
    model->verify();
    ASSERT_EQ(messenger.calls.size(), 1u);
    EXPECT_EQ(messenger.calls[0].token, "123:ABC");
    EXPECT_EQ(model->phase(), Phase::of(PK::working));
    EXPECT_FALSE(stored(TelegramSecretKeys::botToken)) << "stored only once Telegram accepts it";

    std::vector<PK> seen;
    auto watch = model->phase.observe([&](const Phase& p) { seen.push_back(p.kind); });
    messenger.succeed<std::string>("@helper_bot");
    EXPECT_EQ(stored(TelegramSecretKeys::botToken), "123:ABC");
    EXPECT_EQ(model->botUsername(), "@helper_bot");
    EXPECT_EQ(model->botToken(), "  123:ABC\n");
    EXPECT_EQ(seen, (std::vector<PK>{PK::working, PK::verified}));

    model->botToken.set("wrong");
    model->verify();
    messenger.fail(TelegramError::unauthorized());
    EXPECT_EQ(model->phase(), Phase::failed(rejected));
    EXPECT_FALSE(model->botUsername());
    EXPECT_EQ(stored(TelegramSecretKeys::botToken), "123:ABC");

    model->load();
    EXPECT_EQ(model->botToken(), "123:ABC");
    EXPECT_EQ(model->phase(), Phase::failed(rejected)) << "without a chat, loading keeps the last outcome";
    EXPECT_FALSE(model->linkedChatLabel());
}

TEST_F(TelegramSettingsViewModelTest, BlankInputOrNoLinkedChatStartsNothing) {
    model->botToken.set(" \t\n\u00a0");
    EXPECT_TRUE(model->verifyEnabled()) << "the button looks at the untrimmed text";
    int changes = 0;
    auto watch = model->objectWillChange.connect([&] { ++changes; });
    model->verify();
    model->linkChat();
    EXPECT_EQ(changes, 0);
    secrets.values[TelegramSecretKeys::botToken] = "stored";
    model->sendTest();
    EXPECT_TRUE(messenger.calls.empty());
    EXPECT_EQ(model->phase(), Phase::of(PK::idle));
}

TEST_F(TelegramSettingsViewModelTest, LinkChatUsesTheFieldAndStoresTheIdAsDecimalText) {
    // Loaded from a previous run, only the chat's id is known.
    secrets.values = {{TelegramSecretKeys::botToken, "old"}, {TelegramSecretKeys::chatID, "-7"}};
    model->botToken.set("typed, never verified");
    model->load();
    EXPECT_EQ(model->botToken(), "old");
    EXPECT_EQ(model->linkedChatLabel(), "Chat -7");
    EXPECT_EQ(model->phase(), Phase::of(PK::linked));
    EXPECT_FALSE(model->botUsername());
    EXPECT_FALSE(model->linkChatEnabled()) << "linking waits for a verification in this run";

    verifyAs("new ");
    model->linkChat();
    ASSERT_EQ(messenger.calls.size(), 2u);
    EXPECT_EQ(messenger.calls[1].operation, "discoverChat");
    EXPECT_EQ(messenger.calls[1].token, "new");
    messenger.succeed(TelegramChat{-1001, "Ops room", std::nullopt, std::nullopt});
    EXPECT_EQ(stored(TelegramSecretKeys::chatID), "-1001");
    EXPECT_EQ(model->linkedChatLabel(), "Ops room");
    EXPECT_EQ(model->phase(), Phase::of(PK::linked));

    TelegramSettingsViewModel restarted(messenger, secrets, preferences);
    restarted.load();
    EXPECT_EQ(restarted.linkedChatLabel(), "Chat -1001");
}

TEST_F(TelegramSettingsViewModelTest, AFailedLinkKeepsThePreviousChat) {
    secrets.values[TelegramSecretKeys::chatID] = "7";
    model->load();
    verifyAs("tok");
    model->linkChat();
    messenger.fail(TelegramError::noChat());
    EXPECT_EQ(model->phase(), Phase::failed("Message your bot once in Telegram, then tap Link chat."));
    EXPECT_EQ(model->linkedChatLabel(), "Chat 7");
    EXPECT_EQ(stored(TelegramSecretKeys::chatID), "7");
    EXPECT_EQ(model->botUsername(), "@helper_bot");
}

TEST_F(TelegramSettingsViewModelTest, SendTestUsesTheStoredValuesNotTheField) {
    secrets.values = {{TelegramSecretKeys::botToken, "stored"}, {TelegramSecretKeys::chatID, "-5"}};
    model->botToken.set("typed");
    model->sendTest();
    ASSERT_EQ(messenger.calls.size(), 1u);
    EXPECT_EQ(messenger.calls[0].token, "stored");
    EXPECT_EQ(messenger.calls[0].chatID, "-5");
    EXPECT_EQ(messenger.calls[0].text,
              "Tovrin is connected — you'll be pinged here when an agent is waiting.");
    EXPECT_EQ(model->phase(), Phase::of(PK::working));
    messenger.succeedSending();
    EXPECT_EQ(model->phase(), Phase::of(PK::testSent));

    model->sendTest();
    messenger.fail(TelegramError::api("Forbidden: bot was blocked by the user"));
    EXPECT_EQ(model->phase(),
              Phase::failed("Telegram turned it away: Forbidden: bot was blocked by the user"));
}

TEST_F(TelegramSettingsViewModelTest, TheStatusLineFollowsThePhase) {
    using Line = TelegramStatusLine;
    using Tone = TelegramTone;
    const std::vector<std::pair<Phase, std::optional<Line>>> rows = {
        {Phase::of(PK::idle), std::nullopt},
        {Phase::of(PK::working), Line{true, "Working…", Tone::ashDim}},
        {Phase::of(PK::verified), Line{false, "Token verified.", Tone::ashDim}},
        {Phase::of(PK::linked), Line{false, "Chat linked.", Tone::ashDim}},
        {Phase::of(PK::testSent), Line{false, "Test message sent.", Tone::ember}},
        {Phase::failed("Could not connect to the server."),
         Line{false, "Could not connect to the server.", Tone::waitingRed}},
    };
    for (const auto& [phase, line] : rows) {
        model->phase.set(phase);
        EXPECT_EQ(model->statusLine(), line) << static_cast<int>(phase.kind);
    }
}

TEST_F(TelegramSettingsViewModelTest, AnAnswerAfterTheModelIsGoneIsIgnored) {
    model->botToken.set("tok");
    model->verify();
    model.reset();
    messenger.succeed<std::string>("@late");
    EXPECT_FALSE(stored(TelegramSecretKeys::botToken));
}

} // namespace
} // namespace tovrin
