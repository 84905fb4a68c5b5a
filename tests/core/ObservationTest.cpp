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

} // namespace
} // namespace tovrin
