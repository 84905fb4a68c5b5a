#include "ui/views/ChangeRelay.h"

#include "core/Property.h"
#include "core/Signal.h"

#include <QCoreApplication>
#include <gtest/gtest.h>
#include <vector>

namespace tovrin {
namespace {

struct Observed {
    Signal<> objectWillChange;
    Property<int> value{objectWillChange, 0};
};

TEST(ChangeRelayTest, ABurstGivesOneLaterCallThatSeesTheStoredValuesAndARelayGoneBeforeItsTurnCallsNothing) {
    Observed observed;
    std::vector<int> seen;
    QObject owner;
    auto* relay = new ChangeRelay(
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

    observed.value.set(5);
    delete relay;
    QCoreApplication::processEvents();
    observed.value.set(6);
    QCoreApplication::processEvents();
    EXPECT_EQ(seen, (std::vector<int>{3, 4}));
}

} // namespace
} // namespace tovrin
