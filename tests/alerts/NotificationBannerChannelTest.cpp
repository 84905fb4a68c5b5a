#include "alerts/NotificationBannerChannel.h"

#include "support/FakeAlertPorts.h"
#include "support/MemoryDefaultsStore.h"
#include "support/SampleSessions.h"

#include <gtest/gtest.h>

namespace tovrin {
namespace {

class NotificationBannerChannelTest : public ::testing::Test {
protected:
    AgentSession a = test::session("claude-code", "a", SessionState::waiting, TimePoint{});
    AgentSession b = test::session("codex-cli", "b", SessionState::waiting, TimePoint{});
    MemoryDefaultsStore defaults;
    PreferencesStore preferences{defaults};
    test::FakeDesktopNotifier notifier;
    NotificationBannerChannel channel{preferences, notifier};
};

TEST_F(NotificationBannerChannelTest, PostsOnlyWhenSwitchedOnAndAsksCapabilitiesOnceInARun) {
    preferences.notificationBannerEnabled.set(false);
    channel.notifyWaiting({a}, {a});
    channel.remindWaiting({a});
    EXPECT_TRUE(notifier.shown.empty()) << "banners off post nothing";

    preferences.notificationBannerEnabled.set(true);
    channel.notifyWaiting({}, {a});
    EXPECT_EQ(notifier.capabilityRequests, 0);

    channel.notifyWaiting({b}, {a, b});
    channel.remindWaiting({a, b});
    channel.ensureCapabilitiesKnown();
    EXPECT_EQ(notifier.capabilityRequests, 1);
    using Shown = std::vector<std::pair<std::string, std::string>>;
    EXPECT_EQ(notifier.shown,
              (Shown{{"Codex is waiting", "b"}, {"2 agents are waiting", "Claude Code, Codex"}}));
}

} // namespace
} // namespace tovrin
