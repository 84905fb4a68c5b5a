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

// One sound per three seconds: an id that resolves to nothing still takes its turn, and a clock set
// back stays silent until it passes the last sound admitted by the interval.
TEST_F(SoundManagerTest, AdmitsASoundOnlyThreeSecondsAfterTheLastOneAdmitted) {
    EXPECT_FALSE(playsAt(0, "Nope"));
    EXPECT_EQ(manager.lastPlayed(), start);
    EXPECT_FALSE(playsAt(2.9));
    EXPECT_EQ(manager.lastPlayed(), start) << "a held-back sound does not move the reference";
    EXPECT_TRUE(playsAt(3.0)); // only a gap strictly below the interval holds a sound back

    EXPECT_FALSE(playsAt(1)); // the clock set back
    EXPECT_FALSE(playsAt(5.9));
    EXPECT_TRUE(playsAt(6));
    EXPECT_EQ(player.played, (std::vector{horn, horn}));
}

} // namespace
} // namespace tovrin
