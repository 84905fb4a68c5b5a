#include "alerts/SoundManager.h"

#include "support/FakeAlertPorts.h"
#include "support/ManualLoop.h"
#include "support/TempDir.h"

#include <gtest/gtest.h>

namespace tovrin {
namespace {

class SoundManagerTest : public ::testing::Test {
protected:
    // Whether a sound played at `seconds` after the start.
    bool playsAt(double seconds, const std::string& id = "horn-of-gondor") {
        const auto before = player.played.size();
        clock.set(addSeconds(start, seconds));
        manager.playWaiting(id);
        return player.played.size() > before;
    }

    test::TempDir share;
    std::filesystem::path horn = share.write("Sounds/horn-of-gondor.wav", "RIFF");
    test::FakeSoundPlayer player;
    CustomSoundManager custom{share.path() / "custom"};
    SoundCatalog catalog{share.path() / "Sounds", custom, player};
    TimePoint start = test::ManualLoop::defaultStart();
    test::ManualClock clock{start};
    SoundManager manager{clock, catalog, player};
};

TEST_F(SoundManagerTest, HoldsBackSoundsWithinThreeSecondsOfTheLastOneAdmitted) {
    EXPECT_TRUE(playsAt(0));
    EXPECT_FALSE(playsAt(2.9));
    EXPECT_EQ(manager.lastPlayed(), start);
    EXPECT_TRUE(playsAt(3.0)); // only a gap strictly below the interval holds a sound back
    EXPECT_FALSE(playsAt(5.9));
    EXPECT_EQ(player.played, (std::vector{horn, horn}));
}

TEST_F(SoundManagerTest, ClockSetBackStaysSilentUntilItPassesTheLastPlayByTheInterval) {
    EXPECT_TRUE(playsAt(100));
    EXPECT_FALSE(playsAt(40));
    EXPECT_FALSE(playsAt(102.9));
    EXPECT_TRUE(playsAt(103));
}

TEST_F(SoundManagerTest, IdThatResolvesToNothingStillTakesItsTurn) {
    EXPECT_FALSE(playsAt(0, "Nope"));
    EXPECT_EQ(manager.lastPlayed(), start);
    EXPECT_FALSE(playsAt(1));
    EXPECT_TRUE(playsAt(3));
}

} // namespace
} // namespace tovrin
