#include "core/PreferencesStore.h"

#include "support/MemoryDefaultsStore.h"

#include <functional>
#include <gtest/gtest.h>
#include <map>
#include <set>
#include <string>
#include <vector>

namespace tovrin {
namespace {

using nlohmann::json;
using Tools = std::set<std::string>;
using Stored = std::map<std::string, json>;

TEST(PreferencesStore, FirstLaunchHasEveryDefaultAndWritesNothing) {
    MemoryDefaultsStore defaults;
    const PreferencesStore prefs(defaults);

    EXPECT_EQ(prefs.ttlSeconds(), 1800);
    EXPECT_TRUE(prefs.soundEnabled());
    EXPECT_EQ(prefs.alertSound(), "horn-of-gondor");
    EXPECT_FALSE(prefs.notificationBannerEnabled());
    EXPECT_EQ(prefs.autoFocusMode(), AutoFocusMode::off);
    EXPECT_FALSE(prefs.repeatReminderEnabled());
    EXPECT_EQ(prefs.repeatReminderSeconds(), 30);
    EXPECT_TRUE(prefs.showFloatingChip());
    EXPECT_FALSE(prefs.chipOnlyWhenWaiting());
    EXPECT_EQ(prefs.chipOpacity(), 100.0);
    EXPECT_FALSE(prefs.flagSilentWorking());
    EXPECT_TRUE(prefs.usageAnalyticsEnabled());
    EXPECT_FALSE(prefs.telegramEnabled());
    EXPECT_TRUE(prefs.disabledTools().empty());
    EXPECT_EQ(defaults.writeCount(), 0u);
}

// Each case stores one value and reads it back through a fresh store; the stored value must
// never be rewritten by loading.
struct LoadCase {
    const char* name;
    const char* key;
    json stored;
    std::function<bool(const PreferencesStore&)> loadedAsExpected;
};

class PreferencesLoadRules : public ::testing::TestWithParam<LoadCase> {};

TEST_P(PreferencesLoadRules, LoadsAndLeavesTheStoredValueAlone) {
    const auto& c = GetParam();
    MemoryDefaultsStore defaults(Stored{{c.key, c.stored}, {"flagSilentWorking", true}});
    PreferencesStore prefs(defaults);
    EXPECT_TRUE(c.loadedAsExpected(prefs));
    // A wrong type in one key leaves the others alone.
    EXPECT_TRUE(prefs.flagSilentWorking());
    EXPECT_EQ(defaults.writeCount(), 0u);
    EXPECT_EQ(defaults.object(c.key), c.stored);
    // Nor by writing another setting, even where it loaded as the default (an unknown mode).
    prefs.flagSilentWorking.set(false);
    EXPECT_EQ(defaults.object(c.key), c.stored);
}

const LoadCase loadCases[] = {
    {"IntegerReads", "ttlSeconds", 45, [](auto& p) { return p.ttlSeconds() == 45; }},
    {"WholeDoubleReadsAsInteger", "ttlSeconds", 45.0, [](auto& p) { return p.ttlSeconds() == 45; }},
    {"FractionalDoubleIsNoInteger", "ttlSeconds", 45.5, [](auto& p) { return p.ttlSeconds() == 1800; }},
    {"NumericStringIsNoInteger", "ttlSeconds", "30", [](auto& p) { return p.ttlSeconds() == 1800; }},
    {"BoolIsNoInteger", "repeatReminderSeconds", true,
     [](auto& p) { return p.repeatReminderSeconds() == 30; }},
    {"IntegerBeyondRange", "ttlSeconds", json(std::uint64_t(1) << 63),
     [](auto& p) { return p.ttlSeconds() == 1800; }},
    {"NegativeIntegerReads", "repeatReminderSeconds", -5,
     [](auto& p) { return p.repeatReminderSeconds() == -5; }},
    {"BoolReads", "soundEnabled", false, [](auto& p) { return !p.soundEnabled(); }},
    {"IntegerZeroIsNoBool", "soundEnabled", 0, [](auto& p) { return p.soundEnabled(); }},
    {"IntegerOneIsNoBool", "telegramEnabled", 1, [](auto& p) { return !p.telegramEnabled(); }},
    {"StringTrueIsNoBool", "notificationBannerEnabled", "true",
     [](auto& p) { return !p.notificationBannerEnabled(); }},
    {"StringReads", "alertSound", "custom:ping.wav",
     [](auto& p) { return p.alertSound() == "custom:ping.wav"; }},
    {"NumberIsNoString", "alertSound", 7, [](auto& p) { return p.alertSound() == "horn-of-gondor"; }},
    {"KnownModeReads", "autoFocusMode", "latest",
     [](auto& p) { return p.autoFocusMode() == AutoFocusMode::latest; }},
    {"UnknownModeIsOff", "autoFocusMode", "sometimes",
     [](auto& p) { return p.autoFocusMode() == AutoFocusMode::off; }},
    {"ModeIsCaseSensitive", "autoFocusMode", "Single",
     [](auto& p) { return p.autoFocusMode() == AutoFocusMode::off; }},
    {"OpacityBelowFloorRises", "chipOpacity", 5, [](auto& p) { return p.chipOpacity() == 20.0; }},
    {"OpacityAtFloorStays", "chipOpacity", 20.0, [](auto& p) { return p.chipOpacity() == 20.0; }},
    {"OpacityHasNoUpperBound", "chipOpacity", 150, [](auto& p) { return p.chipOpacity() == 150.0; }},
    {"OpacityKeepsFraction", "chipOpacity", 55.5, [](auto& p) { return p.chipOpacity() == 55.5; }},
    {"OpacityStringIsDefault", "chipOpacity", "50", [](auto& p) { return p.chipOpacity() == 100.0; }},
    {"ToolsCollapseDuplicates", "disabledTools", json::array({"codex-cli", "cursor-ide", "codex-cli"}),
     [](auto& p) {
         return p.disabledTools() == Tools{"codex-cli", "cursor-ide"};
     }},
    {"ToolsWithANumberAreEmpty", "disabledTools", json::array({"codex-cli", 3}),
     [](auto& p) { return p.disabledTools().empty(); }},
    {"ToolsAsStringAreEmpty", "disabledTools", "codex-cli",
     [](auto& p) { return p.disabledTools().empty(); }},
    {"HostsKeepTheirOrderOnce", "remoteHosts", json::array({"box", "dev@build", "box"}),
     [](auto& p) {
         return p.remoteHosts() == std::vector<std::string>{"box", "dev@build"};
     }},
};

INSTANTIATE_TEST_SUITE_P(, PreferencesLoadRules, ::testing::ValuesIn(loadCases),
                         [](const auto& testParam) { return std::string(testParam.param.name); });

// Read back by the load rules above.
TEST(PreferencesStore, WritesPersistUnderThePropertyNameWithTheirJsonType) {
    MemoryDefaultsStore defaults;
    {
        PreferencesStore prefs(defaults);
        prefs.ttlSeconds.set(45); // no step of the settings window, still taken as is
        prefs.soundEnabled.set(false);
        prefs.alertSound.set("custom:ping.wav");
        prefs.autoFocusMode.set(AutoFocusMode::latest);
        prefs.repeatReminderSeconds.set(3);
        prefs.chipOpacity.set(40.0);
        prefs.disabledTools.set({"cursor-cli", "codex-cli"});
    }
    const auto stored = [&](const char* key) { return defaults.object(key).value_or(json()); };
    EXPECT_TRUE(stored("ttlSeconds").is_number_integer());
    EXPECT_EQ(stored("ttlSeconds"), 45);
    EXPECT_EQ(stored("soundEnabled"), json(false));
    EXPECT_EQ(stored("alertSound"), "custom:ping.wav");
    EXPECT_EQ(stored("autoFocusMode"), "latest");
    EXPECT_EQ(stored("repeatReminderSeconds"), 3);
    EXPECT_TRUE(stored("chipOpacity").is_number_float());
    EXPECT_EQ(stored("chipOpacity"), 40.0);
    ASSERT_TRUE(stored("disabledTools").is_array());
    EXPECT_EQ(stored("disabledTools").get<Tools>(), (Tools{"cursor-cli", "codex-cli"}));
    EXPECT_FALSE(defaults.object("telegramEnabled")); // untouched settings are not written
}

TEST(PreferencesStore, SetToolWritesTheWholeSetEvenWhenNothingChanged) {
    MemoryDefaultsStore defaults;
    PreferencesStore prefs(defaults);
    EXPECT_TRUE(prefs.isToolEnabled("never-seen"));

    prefs.setTool("codex-cli", false);
    prefs.setTool("codex-cli", false);
    EXPECT_EQ(prefs.disabledTools(), Tools{"codex-cli"});
    EXPECT_EQ(defaults.object("disabledTools"), json::array({"codex-cli"}));
    EXPECT_FALSE(prefs.isToolEnabled("codex-cli"));

    const auto writesBefore = defaults.writeCount();
    prefs.setTool("cursor-ide", true);
    EXPECT_EQ(prefs.disabledTools(), Tools{"codex-cli"});
    EXPECT_EQ(defaults.writeCount(), writesBefore + 1);
    EXPECT_EQ(defaults.object("disabledTools"), json::array({"codex-cli"}));

    prefs.setTool("codex-cli", true);
    EXPECT_TRUE(prefs.disabledTools().empty());
    EXPECT_EQ(defaults.object("disabledTools"), json::array());
}

TEST(PreferencesStore, ObserversSeeTheOldValueAndTheStoreIsWrittenAfterThem) {
    MemoryDefaultsStore defaults;
    PreferencesStore prefs(defaults);
    std::vector<std::string> events;
    const auto storedTtl = [&] {
        const auto v = defaults.object("ttlSeconds");
        return v ? v->dump() : std::string("none");
    };

    auto willChange = prefs.objectWillChange.connect([&] {
        events.push_back("will-change ttl " + std::to_string(prefs.ttlSeconds()) + " stored " + storedTtl());
    });
    auto stream = prefs.ttlSeconds.observe([&](std::int64_t v) {
        events.push_back("stream " + std::to_string(v) + " ttl " + std::to_string(prefs.ttlSeconds()) +
                         " stored " + storedTtl());
    });
    prefs.ttlSeconds.set(90);
    prefs.ttlSeconds.set(90);      // an equal value notifies too
    prefs.soundEnabled.set(false); // every setting fires the one will-change signal

    EXPECT_EQ(events, (std::vector<std::string>{
                          "stream 1800 ttl 1800 stored none",
                          "will-change ttl 1800 stored none",
                          "stream 90 ttl 1800 stored none",
                          "will-change ttl 90 stored 90",
                          "stream 90 ttl 90 stored 90",
                          "will-change ttl 90 stored 90",
                      }));
    EXPECT_EQ(prefs.ttlSeconds(), 90);
}

} // namespace
} // namespace tovrin
