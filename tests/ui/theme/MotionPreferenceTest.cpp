#include "ui/viewmodels/MotionPreference.h"

#include <gtest/gtest.h>

namespace tovrin {
namespace {

using namespace MotionPreference;

TEST(MotionPreferenceTest, OverrideWordsAreReadLooselyAndNonsenseIsNoOpinion) {
    EXPECT_EQ(fromOverride("1"), true);
    EXPECT_EQ(fromOverride(" TRUE\n"), true);
    EXPECT_EQ(fromOverride("0"), false);
    EXPECT_EQ(fromOverride("off"), false);
    EXPECT_EQ(fromOverride(""), std::nullopt);
    EXPECT_EQ(fromOverride("maybe"), std::nullopt);
}

TEST(MotionPreferenceTest, GnomeTurnsMotionDownOnlyWhenAnimationsAreOff) {
    EXPECT_EQ(fromGnomeAnimations("false\n"), true);
    EXPECT_EQ(fromGnomeAnimations("true\n"), false);
    EXPECT_EQ(fromGnomeAnimations("No such schema “org.gnome.desktop.interface”"), std::nullopt);
}

TEST(MotionPreferenceTest, KdeReadsTheFactorOfItsOwnGroupOnly) {
    EXPECT_EQ(fromKdeGlobals("[General]\nfoo=1\n[KDE]\nAnimationDurationFactor=0\n"), true);
    EXPECT_EQ(fromKdeGlobals("[KDE]\r\nAnimationDurationFactor = 0.0\r\n"), true);
    EXPECT_EQ(fromKdeGlobals("[KDE]\nAnimationDurationFactor=0.5\n"), false);
    EXPECT_EQ(fromKdeGlobals("[Other]\nAnimationDurationFactor=0\n[KDE]\nLookAndFeel=x\n"), std::nullopt);
    EXPECT_EQ(fromKdeGlobals("[KDE]\nAnimationDurationFactor=zero\n"), std::nullopt);
    EXPECT_EQ(fromKdeGlobals(""), std::nullopt);
}

TEST(MotionPreferenceTest, TheOverrideBeatsTheDesktopAndSilenceMeansFullMotion) {
    EXPECT_FALSE(decide(false, true, true));
    EXPECT_TRUE(decide(std::nullopt, true, false));
    EXPECT_TRUE(decide(std::nullopt, std::nullopt, true));
    EXPECT_FALSE(decide(std::nullopt, std::nullopt, std::nullopt));
}

} // namespace
} // namespace tovrin
