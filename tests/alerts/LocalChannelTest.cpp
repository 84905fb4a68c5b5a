#include "alerts/LocalChannel.h"

#include "support/FakeSoundPorts.h"
#include "support/MemoryDefaultsStore.h"
#include "support/SampleSessions.h"

#include <gtest/gtest.h>

namespace tovrin {
namespace {

TEST(LocalChannelTest, PlaysTheChosenSoundOncePerCallWhileSoundIsOn) {
    const auto a = test::session("claude-code", "a", SessionState::waiting, TimePoint{});
    const auto b = test::session("codex-cli", "b", SessionState::waiting, TimePoint{});
    using Played = std::vector<std::string>;
    const std::tuple<bool, std::vector<AgentSession>, Played> cases[] = {
        {true, {a, b}, {"war-cry", "war-cry"}}, // one notify, one remind
        {true, {}, {}},
        {false, {a}, {}},
    };
    for (const auto& [soundEnabled, sessions, expected] : cases) {
        MemoryDefaultsStore defaults;
        PreferencesStore preferences(defaults);
        preferences.soundEnabled.set(soundEnabled);
        preferences.alertSound.set("war-cry");
        test::RecordingWaitingSound sound;
        LocalChannel channel(sound, preferences);
        channel.notifyWaiting(sessions, {a, b});
        channel.remindWaiting(sessions);
        EXPECT_EQ(sound.played, expected) << soundEnabled << " " << sessions.size();
    }
}

} // namespace
} // namespace tovrin
