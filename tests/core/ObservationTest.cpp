#include "core/Property.h"
#include "core/Signal.h"

#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace tovrin {
namespace {

TEST(Signal, CallsSubscribersInOrderUntilTheirSubscriptionGoes) {
    Signal<int> signal;
    std::vector<std::string> calls;
    auto a = signal.connect([&](int v) { calls.push_back("a" + std::to_string(v)); });
    {
        auto b = signal.connect([&](int v) { calls.push_back("b" + std::to_string(v)); });
        signal.emit(1);
    }
    signal.emit(2);
    EXPECT_EQ(calls, (std::vector<std::string>{"a1", "b1", "a2"}));
}

TEST(Signal, AHandlerMayDisconnectAnotherDuringEmission) {
    Signal<> signal;
    int secondCalls = 0;
    Subscription second;
    auto first = signal.connect([&] { second.reset(); });
    second = signal.connect([&] { ++secondCalls; });
    signal.emit();
    signal.emit();
    EXPECT_EQ(secondCalls, 0);
    EXPECT_EQ(signal.subscriberCount(), 1u);
}

TEST(Signal, SubscriptionMayOutliveTheSignal) {
    Subscription s;
    {
        Signal<> signal;
        s = signal.connect([] {});
    }
    s.reset(); // must not touch freed memory (checked under the sanitizers)
}

TEST(Property, WillChangeFiresBeforeTheStreamAndBothBeforeTheValueIsStored) {
    Signal<> willChange;
    std::vector<std::string> persisted;
    Property<std::string> p(willChange, "old", [&](const std::string& v) { persisted.push_back(v); });

    std::vector<std::string> events;
    auto w = willChange.connect([&] { events.push_back("will-change, value " + p()); });
    auto o = p.observe([&](const std::string& v) { events.push_back("stream " + v + ", value " + p()); });

    p.set("new");
    EXPECT_EQ(events, (std::vector<std::string>{"stream old, value old", "will-change, value old",
                                                "stream new, value old"}));
    EXPECT_EQ(p(), "new");
    EXPECT_EQ(persisted, std::vector<std::string>{"new"});
}

TEST(Property, EveryAssignmentNotifiesAlsoOfAnEqualValue) {
    Signal<> willChange;
    Property<int> p(willChange, 3);
    int deliveries = 0;
    auto o = p.observe([&](int) { ++deliveries; });
    p.set(3);
    p.set(3);
    EXPECT_EQ(deliveries, 3); // the current value on subscription, then both assignments
}

} // namespace
} // namespace tovrin
