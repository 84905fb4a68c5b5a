#include "ui/views/ChangeRelay.h"

#include "core/Property.h"
#include "core/Signal.h"

#include <QCoreApplication>
#include <gtest/gtest.h>
#include <memory>
#include <vector>

namespace tovrin {
namespace {

struct Observed {
    Signal<> objectWillChange;
    Property<int> value{objectWillChange, 0};
};

TEST(ChangeRelayTest, ABurstOfChangesGivesOneLaterCallThatSeesTheStoredValues) {
    Observed observed;
    std::vector<int> seen;
    QObject owner;
    new ChangeRelay(
        observed.objectWillChange, [&] { seen.push_back(observed.value()); }, &owner);

    observed.value.set(1);
    observed.value.set(2);
    observed.value.set(3);
    EXPECT_TRUE(seen.empty());
    QCoreApplication::processEvents();
    EXPECT_EQ(seen, (std::vector<int>{3}));

    observed.value.set(4);
    QCoreApplication::processEvents();
    EXPECT_EQ(seen, (std::vector<int>{3, 4}));
}

TEST(ChangeRelayTest, ARelayGoneBeforeItsTurnCallsNothing) {
    Observed observed;
    int calls = 0;
    auto relay = std::make_unique<ChangeRelay>(
        observed.objectWillChange, [&] { ++calls; }, nullptr);
    observed.value.set(1);
    relay.reset();
    QCoreApplication::processEvents();
    observed.value.set(2);
    QCoreApplication::processEvents();
    EXPECT_EQ(calls, 0);
}

} // namespace
} // namespace tovrin
