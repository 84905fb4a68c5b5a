#include "alerts/AutoFocusChannel.h"

#include "support/FakeAlertPorts.h"
#include "support/MemoryDefaultsStore.h"
#include "support/SampleSessions.h"

#include <gtest/gtest.h>

namespace tovrin {
namespace {

using enum AutoFocusMode;

AgentSession at(const std::string& id, double seconds) {
    return test::session("claude-code", id, SessionState::waiting, addSeconds(TimePoint{}, seconds));
}

TEST(AutoFocusChannelTest, RaisesAtMostOneSessionAsTheModeSaysAndNeverOnReminders) {
    const auto older = at("older", 10);
    const auto newer = at("newer", 20);
    const auto twin = at("twin", 10);
    using Ids = std::vector<std::string>;
    const std::tuple<AutoFocusMode, std::vector<AgentSession>, std::vector<AgentSession>, Ids> cases[] = {
        {off, {newer}, {newer}, {}},
        {single, {newer}, {newer}, {"newer"}},
        {single, {newer}, {newer, older}, {}}, // one is new, but two wait
        {latest, {older, newer}, {older, newer}, {"newer"}},
        {latest, {older, twin}, {older, twin}, {"older"}}, // a tie goes to the earlier in the list
        {latest, {older}, {newer, older}, {"older"}},      // only the new ones count
        {latest, {}, {newer}, {}},
    };
    for (const auto& [mode, newlyWaiting, allWaiting, expected] : cases) {
        MemoryDefaultsStore defaults;
        PreferencesStore preferences(defaults);
        preferences.autoFocusMode.set(mode);
        test::FakeSessionFocusing focuser;
        AutoFocusChannel channel(focuser, preferences);
        channel.remindWaiting(allWaiting);
        channel.notifyWaiting(newlyWaiting, allWaiting);
        EXPECT_EQ(focuser.focused, expected) << rawValue(mode) << " with " << allWaiting.size();
    }
}

} // namespace
} // namespace tovrin
