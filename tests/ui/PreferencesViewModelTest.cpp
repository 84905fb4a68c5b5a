#include "ui/viewmodels/PreferencesViewModel.h"

#include "core/PreferencesStore.h"
#include "support/MemoryDefaultsStore.h"

#include <gtest/gtest.h>

namespace tovrin {
namespace {

struct PreferencesViewModelTest : ::testing::Test {
    MemoryDefaultsStore defaults;
    PreferencesStore preferences{defaults};
    PreferencesViewModel model{preferences};
};

TEST_F(PreferencesViewModelTest, SteppersKeepToTheirRangesAndLeaveOffGridValuesAlone) {
    struct Case {
        std::int64_t stored;
        int direction;
        std::int64_t expected;
    };
    for (const Case& c : {Case{30, -1, 30}, Case{3600, 1, 3600}, Case{1800, 1, 1830}, Case{45, 1, 75},
                          Case{45, -1, 30}, Case{3590, 1, 3600}, Case{5000, -1, 4970}}) {
        preferences.ttlSeconds.set(c.stored);
        model.stepSessionTimeout(c.direction);
        EXPECT_EQ(preferences.ttlSeconds(), c.expected) << c.stored << " stepped " << c.direction;
    }
    for (const Case& c : {Case{10, -1, 10}, Case{600, 1, 600}, Case{30, 1, 40}, Case{15, -1, 10}}) {
        preferences.repeatReminderSeconds.set(c.stored);
        model.stepRepeatReminder(c.direction);
        EXPECT_EQ(preferences.repeatReminderSeconds(), c.expected) << c.stored << " stepped " << c.direction;
    }

    preferences.ttlSeconds.set(30);
    EXPECT_FALSE(model.canStepSessionTimeout(-1));
    EXPECT_TRUE(model.canStepSessionTimeout(1));
    preferences.repeatReminderSeconds.set(600);
    EXPECT_FALSE(model.canStepRepeatReminder(1));
}

TEST_F(PreferencesViewModelTest, TextsShowTheStoredValueAsItIs) {
    preferences.ttlSeconds.set(45);
    EXPECT_EQ(model.sessionTimeoutText(), "Session timeout: 45s");
    preferences.repeatReminderSeconds.set(30);
    EXPECT_EQ(model.repeatReminderText(), "Repeat every 30s");

    struct Case {
        double stored;
        std::string text;
        int slider;
    };
    for (const Case& c : {Case{47.6, "47%", 47}, Case{20, "20%", 20}, Case{500, "500%", 100}}) {
        preferences.chipOpacity.set(c.stored);
        EXPECT_EQ(model.opacityText(), c.text) << c.stored;
        EXPECT_EQ(model.opacitySliderValue(), c.slider) << c.stored;
    }
}

} // namespace
} // namespace tovrin
