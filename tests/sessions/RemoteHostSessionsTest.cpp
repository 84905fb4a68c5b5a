#include "sessions/CombinedSessionReader.h"
#include "sessions/SessionStore.h"
#include "support/FakeDirectoryWatcher.h"
#include "support/FakeRemoteHostLink.h"
#include "support/FakeSessionReader.h"
#include "support/ManualLoop.h"
#include "support/MemoryDefaultsStore.h"
#include "support/RecordingChannel.h"
#include "support/SampleSessions.h"

#include <gtest/gtest.h>

namespace tovrin {
namespace {

using enum SessionState;

// This machine with one session, and the host "build" whose link the test drives, under a real store.
class RemoteHostSessionsTest : public ::testing::Test {
protected:
    RemoteHostSessionsTest() {
        auto link = std::make_unique<test::FakeRemoteHostLink>();
        remote = link.get();
        combined.addHost(std::make_unique<RemoteHostSessions>("build", std::move(link)));
        remote->start([this] { store.refresh(); });
        local.set({test::session("claude-code", "s1", working, loop.clock().now())});
    }

    // A status file on the remote host, written `age` seconds ago by process `pid`.
    std::string remoteFile(const std::string& id, SessionState state, double age, std::int64_t pid) {
        auto file = test::statusFile("claude-code", id, state, addSeconds(loop.clock().now(), -age));
        file["pid"] = pid;
        return file.dump();
    }
    std::vector<std::string> ids() const {
        std::vector<std::string> result;
        for (const auto& s : store.sessions())
            result.push_back(s.id());
        return result;
    }

    test::ManualLoop loop;
    MemoryDefaultsStore defaults;
    PreferencesStore preferences{defaults};
    test::FakeSessionReader local;
    CombinedSessionReader combined{local};
    test::FakeRemoteHostLink* remote = nullptr;
    std::shared_ptr<test::ChannelLog> alerts = std::make_shared<test::ChannelLog>();
    int watcherStarts = 0;
    SessionStore store{
        combined,
        preferences,
        {std::make_shared<test::RecordingChannel>("local", alerts)},
        [this](std::function<void()>) { return std::make_unique<test::FakeDirectoryWatcher>(watcherStarts); },
        loop,
        loop.clock()};
};

TEST_F(RemoteHostSessionsTest, RemoteFilesJoinTheListUnderTheirHostAndAlertLikeLocalOnes) {
    store.start();
    // The same session id as the local one, a file that does not decode, and a waiting session.
    remote->deliver({{{"a.json", remoteFile("s1", working, 1, 700)},
                      {"junk.json", "{not json"},
                      {"b.json", remoteFile("s2", waiting, 0, 701)}},
                     {700, 701}});
    // Newest first; equal times keep the reading order, this machine's files before a host's.
    EXPECT_EQ(ids(), (std::vector<std::string>{"claude-code__s1", "build:claude-code__s2",
                                               "build:claude-code__s1"}));
    EXPECT_EQ(store.sessions().back().host, "build");
    ASSERT_EQ(alerts->size(), 1u);
    EXPECT_EQ(test::idsOf(alerts->front().sessions), std::vector<std::string>{"build:claude-code__s2"});
}

TEST_F(RemoteHostSessionsTest, TheHostTellsWhichAgentsRunAndAnUnreachableHostsSessionsAgeOut) {
    const double ttl = static_cast<double>(preferences.ttlSeconds());
    store.start();
    // Older than the time to live, but their processes run there: only the dead one's session goes,
    // whatever this machine's pid 1 or a free pid would say.
    remote->deliver({{{"a.json", remoteFile("alive", waiting, ttl + 60, 1)},
                      {"b.json", remoteFile("dead", waiting, 0, 700)}},
                     {1}});
    EXPECT_EQ(ids(), (std::vector<std::string>{"claude-code__s1", "build:claude-code__alive"}));

    // Out of reach, the host's word on liveness is stale: the kept snapshot ages out by itself.
    remote->deliver({{{"b.json", remoteFile("fresh", working, 0, 700)}}, {}});
    remote->lose("Connection refused");
    EXPECT_EQ(store.unreachableHosts(), (std::vector<UnreachableHost>{{"build", "Connection refused"}}));
    EXPECT_EQ(ids(), (std::vector<std::string>{"claude-code__s1", "build:claude-code__fresh"}));
    local.set({});
    loop.advance(ttl + SessionStore::tickInterval);
    EXPECT_EQ(ids(), std::vector<std::string>{});
}

} // namespace
} // namespace tovrin
