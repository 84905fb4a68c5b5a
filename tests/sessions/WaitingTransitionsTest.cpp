#include "sessions/SessionStore.h"
#include "support/FakeSessionReader.h"
#include "support/ManualLoop.h"
#include "support/MemoryDefaultsStore.h"
#include "support/RecordingChannel.h"
#include "support/SampleSessions.h"

#include <gtest/gtest.h>

namespace tovrin {
namespace {

using enum SessionState;
using Calls = std::vector<std::string>;

std::string namesOf(const std::vector<AgentSession>& list) {
    std::string out;
    for (const auto& s : list)
        out += (out.empty() ? "" : ",") + s.sessionId;
    return out;
}

// "notify a of a,b" is sent to every channel, in the order the store was given them.
Calls toEveryChannel(const std::string& call) {
    return {"local " + call, "autoFocus " + call, "banner " + call, "telegram " + call};
}

class WaitingTransitionsTest : public ::testing::Test {
protected:
    AgentSession aged(const std::string& id, SessionState state, double age) {
        return test::session("t", id, state, addSeconds(loop.clock().now(), -age));
    }
    void start() {
        std::vector<std::shared_ptr<NotificationChannel>> channels;
        for (const char* name : {"local", "autoFocus", "banner", "telegram"})
            channels.push_back(std::make_shared<test::RecordingChannel>(name, log));
        store = std::make_unique<SessionStore>(reader, preferences, channels, nullptr, loop, loop.clock());
        store->start();
    }
    // The calls since the last look, described compactly.
    Calls takeCalls() {
        Calls calls;
        for (const auto& c : *log) {
            calls.push_back(c.channel +
                            (c.kind == test::ChannelCall::Kind::notifyWaiting
                                 ? " notify " + namesOf(c.sessions) + " of " + namesOf(c.allWaiting)
                                 : " remind " + namesOf(c.sessions)));
        }
        log->clear();
        return calls;
    }
    void refreshWith(std::vector<AgentSession> sessions) {
        reader.set(std::move(sessions));
        store->refresh();
    }

    std::shared_ptr<test::ChannelLog> log = std::make_shared<test::ChannelLog>();
    test::ManualLoop loop;
    MemoryDefaultsStore defaults;
    PreferencesStore preferences{defaults};
    test::FakeSessionReader reader;
    std::unique_ptr<SessionStore> store;
};

TEST_F(WaitingTransitionsTest, WaitersAtStartAndNewcomersAlertOnceLeavingIsSilentAndComingBackAlertsAgain) {
    reader.set({aged("b", waiting, 20), aged("a", waiting, 10), aged("w", working, 5)});
    start();
    EXPECT_EQ(takeCalls(), toEveryChannel("notify a,b of a,b"));

    store->refresh();
    EXPECT_TRUE(takeCalls().empty());

    refreshWith({aged("b", waiting, 20), aged("a", waiting, 10), aged("c", waiting, 1)});
    EXPECT_EQ(takeCalls(), toEveryChannel("notify c of c,a,b"));

    // Unreadable for one pass.
    refreshWith({aged("b", waiting, 20), aged("c", waiting, 1)});
    EXPECT_TRUE(takeCalls().empty());
    refreshWith({aged("a", waiting, 10), aged("b", waiting, 20), aged("c", waiting, 1)});
    EXPECT_EQ(takeCalls(), toEveryChannel("notify a of c,a,b"));

    // Working for one pass.
    refreshWith({aged("a", working, 0), aged("b", waiting, 20), aged("c", waiting, 1)});
    refreshWith({aged("a", waiting, 0), aged("b", waiting, 20), aged("c", waiting, 1)});
    EXPECT_EQ(takeCalls(), toEveryChannel("notify a of a,c,b"));

    refreshWith({});
    EXPECT_TRUE(takeCalls().empty());
}

TEST_F(WaitingTransitionsTest, TheChannelsHearOfNewWaitersBeforeTheListIsPublished) {
    start();
    std::vector<std::size_t> callsWhenPublished;
    auto seen = store->sessions.observe([&](const auto&) { callsWhenPublished.push_back(log->size()); });
    refreshWith({aged("a", waiting, 1)});
    EXPECT_EQ(callsWhenPublished, (std::vector<std::size_t>{0, 4}));
}

TEST_F(WaitingTransitionsTest, ADismissedWaiterIsSilentUntilItWaitsAgainAfterTheDismissal) {
    const auto a = aged("a", waiting, 10);
    reader.set({a, aged("b", waiting, 20)});
    start();
    takeCalls();

    store->dismiss(a);
    store->refresh();
    EXPECT_TRUE(takeCalls().empty());

    refreshWith({aged("a", working, 0), aged("b", waiting, 20)});
    EXPECT_TRUE(takeCalls().empty());
    refreshWith({aged("a", waiting, 0), aged("b", waiting, 20)});
    EXPECT_EQ(takeCalls(), toEveryChannel("notify a of a,b"));
}

TEST_F(WaitingTransitionsTest, SilentWorkingTakenForWaitingAlertsLikeAHook) {
    preferences.flagSilentWorking.set(true);
    reader.set({aged("a", working, 80)});
    start();
    EXPECT_TRUE(takeCalls().empty());

    loop.clock().advance(11);
    store->refresh();
    ASSERT_EQ(log->size(), 4u);
    EXPECT_EQ(log->front().sessions.at(0).state, waiting);
    EXPECT_EQ(takeCalls(), toEveryChannel("notify a of a"));
}

TEST_F(WaitingTransitionsTest, TheReminderIntervalIsTheSettingWithAFloorOfFiveSeconds) {
    const std::vector<std::pair<std::int64_t, double>> cases{{3, 5}, {5, 5}, {7, 7}, {30, 30}};
    preferences.repeatReminderEnabled.set(true);
    for (const auto& [setting, interval] : cases) {
        SCOPED_TRACE("repeatReminderSeconds " + std::to_string(setting));
        preferences.repeatReminderSeconds.set(setting);
        reader.set({aged("a", waiting, 1)});
        start();
        takeCalls();
        loop.advance(interval - 1);
        EXPECT_TRUE(takeCalls().empty());
        loop.advance(1);
        EXPECT_EQ(takeCalls(), toEveryChannel("remind a"));
        loop.advance(interval);
        EXPECT_EQ(takeCalls(), toEveryChannel("remind a"));
    }
}

TEST_F(WaitingTransitionsTest, TheReminderNamesThePublishedWaitersWithoutAPassOfItsOwn) {
    preferences.repeatReminderEnabled.set(true);
    preferences.repeatReminderSeconds.set(10);
    reader.set({aged("b", waiting, 8), aged("w", working, 3), aged("a", waiting, 5)});
    start();
    takeCalls();

    reader.set({}); // not read until the next pass
    const int passes = reader.calls();
    loop.advance(10);
    EXPECT_EQ(takeCalls(), toEveryChannel("remind a,b"));
    EXPECT_EQ(reader.calls(), passes);

    // Once none waits, the reminder keeps running and says nothing.
    store->refresh();
    loop.advance(30);
    EXPECT_TRUE(takeCalls().empty());
    EXPECT_EQ(loop.activeTimers(), 2u);
}

TEST_F(WaitingTransitionsTest, ASettingsChangeRestartsTheReminderAndTurningItOffStopsIt) {
    preferences.repeatReminderEnabled.set(true);
    preferences.repeatReminderSeconds.set(10);
    reader.set({aged("a", waiting, 1)});
    start();
    takeCalls();

    loop.advance(6);
    preferences.soundEnabled.set(false);
    loop.advance(6); // past the first phase's 10 s
    EXPECT_TRUE(takeCalls().empty());
    loop.advance(4);
    EXPECT_EQ(takeCalls(), toEveryChannel("remind a"));

    preferences.repeatReminderEnabled.set(false);
    loop.drain();
    EXPECT_EQ(loop.activeTimers(), 1u);
    loop.advance(60);
    EXPECT_TRUE(takeCalls().empty());
}

} // namespace
} // namespace tovrin
