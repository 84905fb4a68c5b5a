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
    std::vector<int> order;
    std::vector<std::thread::id> threads;
    bool ranInline = false;

    loop.post([&] {
        order.push_back(-1);
        threads.push_back(std::this_thread::get_id());
    });
    ranInline = !order.empty();

    std::thread poster([&] {
        for (int i = 0; i < 200; ++i) {
            loop.post([&, i] {
                order.push_back(i);
                threads.push_back(std::this_thread::get_id());
            });
        }
    });
    poster.join();
    ASSERT_TRUE(pumpUntil([&] { return order.size() == 201; })) << order.size() << " tasks ran";

    EXPECT_FALSE(ranInline);
    std::vector<int> expected{-1};
    for (int i = 0; i < 200; ++i)
        expected.push_back(i);
    EXPECT_EQ(order, expected);
    EXPECT_EQ(threads, std::vector<std::thread::id>(201, loopThread));
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

TEST_F(QtMainLoopTest, OnceFiresOnceAndNotAtAllWhenCancelledFirst) {
    int fired = 0;
    int cancelledFired = 0;
    int droppedFired = 0;
    auto handle = loop.once(Seconds(0.01), [&] { ++fired; });
    auto cancelled = loop.once(Seconds(0.02), [&] { ++cancelledFired; });
    cancelled.cancel();
    {
        auto dropped = loop.once(Seconds(0.02), [&] { ++droppedFired; });
    }

    ASSERT_TRUE(pumpUntil([&] { return fired > 0; }));
    pumpFor(150ms);
    EXPECT_EQ(fired, 1);
    EXPECT_EQ(cancelledFired, 0);
    EXPECT_EQ(droppedFired, 0);
    EXPECT_FALSE(cancelled.active());
}

// A handler that replaces or drops its own timer, as a reschedule does.
TEST_F(QtMainLoopTest, AHandlerMayDropItsOwnTimer) {
    int repeats = 0;
    int onces = 0;
    TimerHandle repeating;
    repeating = loop.repeat(Seconds(0.01), [&] {
        if (++repeats == 2) repeating = TimerHandle();
    });
    TimerHandle single;
    single = loop.once(Seconds(0.01), [&] {
        ++onces;
        single = loop.once(Seconds(0.01), [&] { ++onces; });
    });
    ASSERT_TRUE(pumpUntil([&] { return repeats >= 2 && onces >= 2; }));
    pumpFor(100ms);
    EXPECT_EQ(repeats, 2);
    EXPECT_EQ(onces, 2);
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
