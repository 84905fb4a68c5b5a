#include "sessions/SessionStore.h"

#include "support/FakeDirectoryWatcher.h"
#include "support/FakeSessionReader.h"
#include "support/ManualLoop.h"
#include "support/MemoryDefaultsStore.h"
#include "support/RecordingChannel.h"
#include "support/SampleSessions.h"

#include <gtest/gtest.h>
#include <optional>
#include <thread>
#include <unistd.h>

namespace tovrin {
namespace {

using enum SessionState;
using Ids = std::vector<std::string>;

class SessionStoreTest : public ::testing::Test {
protected:
    AgentSession aged(const std::string& id, SessionState state, double age, const std::string& tool = "t") {
        return test::session(tool, id, state, addSeconds(loop.clock().now(), -age));
    }
    SessionState stateOf(const std::string& id) const {
        for (const auto& s : store->sessions())
            if (s.sessionId == id) return s.state;
        ADD_FAILURE() << id << " is not in the list";
        return idle;
    }
    SessionStore::WatcherFactory watcherFactory() {
        return [this](std::function<void()> onChange) {
            ++watchersMade;
            onWatcherChange = std::move(onChange);
            return std::make_unique<test::FakeDirectoryWatcher>(watcherStarts);
        };
    }

    test::ManualLoop loop;
    MemoryDefaultsStore defaults;
    PreferencesStore preferences{defaults};
    test::FakeSessionReader reader;
    int watchersMade = 0;
    int watcherStarts = 0;
    std::function<void()> onWatcherChange;
    std::unique_ptr<SessionStore> store = std::make_unique<SessionStore>(
        reader, preferences, std::vector<std::shared_ptr<NotificationChannel>>{}, watcherFactory(), loop,
        loop.clock());
};

TEST_F(SessionStoreTest, StateAndPresenceByAgeAtTheThresholds) {
    struct Case {
        SessionState file;
        bool flagSilentWorking;
        double age;
        std::optional<SessionState> shown; // absent: dropped
        std::optional<std::int64_t> pid = std::nullopt;
    };
    const double week = 7 * 86400;
    const std::vector<Case> cases{
        {working, false, 45, working},
        {working, false, 46, idle},
        {working, true, 46, working},
        {working, true, 90, working},
        {working, true, 91, waiting},
        {working, true, 300, waiting},
        {working, true, 301, idle},
        {waiting, false, 300, waiting},
        {waiting, false, 301, idle},
        {waiting, true, 301, idle},
        {idle, true, 120, idle},
        // TTL of 600 s for files without a pid.
        {idle, false, 600, idle},
        {idle, false, 601, std::nullopt},
        {waiting, true, 601, std::nullopt},
        // A live process keeps its session however old the file.
        {idle, false, week, idle, ::getpid()},
        {working, true, week, idle, ::getpid()},
    };
    preferences.ttlSeconds.set(600);
    for (const auto& c : cases) {
        SCOPED_TRACE(std::string(rawValue(c.file)) + " at " + std::to_string(c.age) + " s, flag " +
                     (c.flagSilentWorking ? "on" : "off") + (c.pid ? ", live pid" : ""));
        preferences.flagSilentWorking.set(c.flagSilentWorking);
        auto s = aged("s", c.file, c.age);
        s.pid = c.pid;
        reader.set({s});
        store->refresh();
        if (!c.shown) {
            EXPECT_TRUE(store->sessions().empty());
            continue;
        }
        ASSERT_EQ(store->sessions().size(), 1u);
        EXPECT_EQ(store->sessions()[0].state, *c.shown);
    }
}

TEST_F(SessionStoreTest, NewestFirstAndEqualTimesKeepTheirReadingOrder) {
    // Enough entries that an unstable sort would reorder ties.
    std::vector<AgentSession> read;
    Ids expected[3];
    for (int i = 0; i < 30; ++i) {
        const std::string id = "s" + std::to_string(i);
        read.push_back(aged(id, idle, 10.0 * (i % 3)));
        expected[i % 3].push_back("t__" + id);
    }
    reader.set(read);
    store->refresh();
    Ids all = expected[0];
    all.insert(all.end(), expected[1].begin(), expected[1].end());
    all.insert(all.end(), expected[2].begin(), expected[2].end());
    EXPECT_EQ(test::idsOf(store->sessions()), all);
}

TEST_F(SessionStoreTest, DisabledToolsAreDroppedByExactIdAndLoseTheirDismissals) {
    reader.set({aged("a", waiting, 10, "codex-cli"), aged("b", waiting, 20, "codex"),
                aged("c", idle, 30, "claude-code")});
    store->refresh();
    store->dismiss(store->sessions()[0]);
    EXPECT_EQ(test::idsOf(store->sessions()), (Ids{"codex__b", "claude-code__c"}));

    preferences.setTool("codex-cli", false);
    store->refresh();
    EXPECT_EQ(test::idsOf(store->sessions()), (Ids{"codex__b", "claude-code__c"}));

    preferences.setTool("codex-cli", true);
    store->refresh();
    EXPECT_EQ(test::idsOf(store->sessions()), (Ids{"codex-cli__a", "codex__b", "claude-code__c"}));
}

// (That a dismissed waiter that works and then waits again is shown and alerts: WaitingTransitionsTest.)
TEST_F(SessionStoreTest, ADismissalHidesASessionUntilItsClassifiedStateChangesOrItLeaves) {
    const auto a = aged("a", waiting, 10);
    const auto b = aged("b", working, 10);
    reader.set({a, b});
    store->refresh();
    const int passes = reader.calls();
    store->dismiss(a);
    EXPECT_EQ(reader.calls(), passes + 1); // the dismissal shows at once
    store->dismiss(b);
    EXPECT_TRUE(store->sessions().empty());
    EXPECT_EQ(store->aggregate(), AggregateStatus::neutral()); // hidden sessions don't count

    // Same files, older: b decays to idle at 46 s, a to idle past 300 s; until then a stays hidden.
    loop.clock().advance(36);
    store->refresh();
    EXPECT_EQ(test::idsOf(store->sessions()), Ids{"t__b"});
    loop.clock().advance(255);
    store->refresh();
    EXPECT_EQ(test::idsOf(store->sessions()), (Ids{"t__a", "t__b"}));
    EXPECT_EQ(stateOf("a"), idle);

    // A session that leaves the list for one pass forgets its dismissal.
    const auto c = aged("c", waiting, 1);
    reader.set({c});
    store->refresh();
    store->dismiss(c);
    reader.set({});
    store->refresh();
    reader.set({c});
    store->refresh();
    EXPECT_EQ(test::idsOf(store->sessions()), Ids{"t__c"});
}

TEST_F(SessionStoreTest, AggregateRollsUpTheList) {
    const std::vector<std::pair<std::vector<SessionState>, AggregateStatus>> cases{
        {{}, AggregateStatus::neutral()},
        {{idle, idle}, AggregateStatus::neutral()},
        {{idle, working}, AggregateStatus::working()},
        {{working, waiting, idle}, AggregateStatus::waiting(1)},
        {{waiting, working, waiting}, AggregateStatus::waiting(2)},
    };
    for (const auto& [states, expected] : cases) {
        std::vector<AgentSession> read;
        for (const auto state : states)
            read.push_back(aged("s" + std::to_string(read.size()), state, 1));
        reader.set(read);
        store->refresh();
        EXPECT_EQ(store->aggregate(), expected) << states.size() << " sessions";
    }
}

TEST_F(SessionStoreTest, ObserversHearEveryPassAndTheListIsStoredBeforeTheAggregate) {
    int deliveries = 0;
    auto s = store->sessions.observe([&](const auto&) { ++deliveries; });
    std::vector<std::size_t> listSizeAtAggregate;
    auto a = store->aggregate.observe(
        [&](const auto&) { listSizeAtAggregate.push_back(store->sessions().size()); });
    reader.set({aged("a", idle, 1)});
    store->refresh();
    store->refresh();
    EXPECT_EQ(deliveries, 3); // on subscription, then once per pass although nothing changed
    EXPECT_EQ(listSizeAtAggregate, (std::vector<std::size_t>{0, 1, 1}));
}

TEST_F(SessionStoreTest, StartRunsTheFirstPassAtOnceThenOneEveryFifteenSecondsAndOnlyOnce) {
    preferences.repeatReminderEnabled.set(true);
    reader.set({aged("a", working, 1)});
    store->start();
    store->start(); // a second start starts nothing more
    EXPECT_EQ(reader.calls(), 1);
    EXPECT_EQ(test::idsOf(store->sessions()), Ids{"t__a"});
    EXPECT_EQ(watchersMade, 1);
    EXPECT_EQ(watcherStarts, 1);
    EXPECT_EQ(loop.activeTimers(), 2u); // the tick and the reminder
    preferences.soundEnabled.set(false);
    EXPECT_EQ(loop.drain(), 1); // settings are listened to once

    loop.advance(14);
    EXPECT_EQ(reader.calls(), 2);
    loop.advance(1);
    EXPECT_EQ(reader.calls(), 3);
    loop.advance(15);
    EXPECT_EQ(reader.calls(), 4);
}

TEST_F(SessionStoreTest, ASettingsChangeRunsAPassThatSeesTheNewValue) {
    reader.set({aged("a", working, 60)});
    store->start();
    EXPECT_EQ(stateOf("a"), idle);
    EXPECT_EQ(loop.activeTimers(), 1u); // the tick; no reminder while reminders are off

    preferences.flagSilentWorking.set(true);
    EXPECT_EQ(reader.calls(), 1); // never a pass inside the change itself
    EXPECT_EQ(loop.drain(), 1);
    EXPECT_EQ(reader.calls(), 2);
    EXPECT_EQ(stateOf("a"), working);

    preferences.repeatReminderEnabled.set(true); // any setting, and this one also starts the reminder
    EXPECT_EQ(loop.activeTimers(), 1u);
    loop.drain();
    EXPECT_EQ(reader.calls(), 3);
    EXPECT_EQ(loop.activeTimers(), 2u);
}

TEST_F(SessionStoreTest, TheWatcherCallbackPostsAPassFromAnyThread) {
    store->start();
    reader.set({aged("a", waiting, 1)});
    std::thread([onChange = onWatcherChange] {
        onChange();
        onChange();
    }).join();
    EXPECT_EQ(reader.calls(), 1);
    EXPECT_EQ(loop.drain(), 2); // triggers are not merged
    EXPECT_EQ(reader.calls(), 3);
    EXPECT_EQ(test::idsOf(store->sessions()), Ids{"t__a"});
}

TEST_F(SessionStoreTest, TasksPostedForAStoreThatIsGoneDoNothing) {
    store->start();
    preferences.flagSilentWorking.set(true);
    onWatcherChange();
    store.reset();
    onWatcherChange(); // a watcher thread may still be on its way out
    EXPECT_EQ(loop.drain(), 3);
    EXPECT_EQ(reader.calls(), 1);
    EXPECT_EQ(loop.activeTimers(), 0u);
    preferences.soundEnabled.set(false);
    EXPECT_EQ(loop.pendingTasks(), 0u);
}

} // namespace
} // namespace tovrin
