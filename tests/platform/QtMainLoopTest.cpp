#include "platform/qt/QtMainLoop.h"

#include "support/QtEventLoopTest.h"

#include <QCoreApplication>
#include <chrono>
#include <gtest/gtest.h>
#include <memory>
#include <thread>
#include <vector>

namespace tovrin {
namespace {

using namespace std::chrono_literals;
using Steady = std::chrono::steady_clock;

class QtMainLoopTest : public test::QtEventLoopTest {
protected:
    QtMainLoop loop;
};

TEST_F(QtMainLoopTest, PostedTasksRunOnTheLoopThreadInOrderAndNeverInsidePost) {
    const auto loopThread = std::this_thread::get_id();
    std::vector<std::pair<int, std::thread::id>> ran;
    loop.post([&] { ran.emplace_back(-1, std::this_thread::get_id()); });
    const bool ranInline = !ran.empty();
    std::thread poster([&] {
        for (int i = 0; i < 200; ++i)
            loop.post([&, i] { ran.emplace_back(i, std::this_thread::get_id()); });
    });
    poster.join();
    ASSERT_TRUE(pumpUntil([&] { return ran.size() == 201; })) << ran.size() << " tasks ran";

    EXPECT_FALSE(ranInline);
    for (int i = 0; i < 201; ++i)
        EXPECT_EQ(ran[i], std::pair(i - 1, loopThread)) << i;
}

TEST_F(QtMainLoopTest, RepeatFiresUntilItsHandleIsDestroyed) {
    int fired = 0;
    auto handle = std::make_unique<TimerHandle>(loop.repeat(Seconds(0.01), [&] { ++fired; }));
    ASSERT_TRUE(pumpUntil([&] { return fired >= 3; }));
    handle.reset();
    const int atStop = fired;
    pumpFor(150ms);
    EXPECT_EQ(fired, atStop);
}

// A handler may also replace or drop its own timer, as a reschedule does.
TEST_F(QtMainLoopTest, OnceFiresOnceAndNotAtAllWhenCancelledFirstAndAHandlerMayDropItsOwnTimer) {
    int onces = 0;
    int cancelledFired = 0;
    int repeats = 0;
    auto cancelled = loop.once(Seconds(0.02), [&] { ++cancelledFired; });
    cancelled.cancel();
    {
        auto dropped = loop.once(Seconds(0.02), [&] { ++cancelledFired; });
    }
    TimerHandle single;
    single = loop.once(Seconds(0.01), [&] {
        ++onces;
        single = loop.once(Seconds(0.01), [&] { ++onces; });
    });
    TimerHandle repeating;
    repeating = loop.repeat(Seconds(0.01), [&] {
        if (++repeats == 2) repeating = TimerHandle();
    });

    ASSERT_TRUE(pumpUntil([&] { return repeats >= 2 && onces >= 2; }));
    pumpFor(150ms);
    EXPECT_EQ(onces, 2);
    EXPECT_EQ(repeats, 2);
    EXPECT_EQ(cancelledFired, 0);
    EXPECT_FALSE(cancelled.active());
}

TEST_F(QtMainLoopTest, HandlesAndPostedTasksMayOutliveTheLoop) {
    int fired = 0;
    auto shortLived = std::make_unique<QtMainLoop>();
    auto repeating = shortLived->repeat(Seconds(0.01), [&] { ++fired; });
    auto single = shortLived->once(Seconds(0.01), [&] { ++fired; });
    shortLived->post([&] { ++fired; });
    shortLived.reset();

    pumpFor(100ms);
    EXPECT_EQ(fired, 0);
    repeating.cancel();
    // `single` goes out of scope after its loop: must do nothing.
}

} // namespace
} // namespace tovrin
