#include "core/SerialQueue.h"

#include <atomic>
#include <chrono>
#include <condition_variable>
#include <future>
#include <gtest/gtest.h>
#include <map>
#include <memory>
#include <mutex>
#include <thread>
#include <vector>

namespace tovrin {
namespace {

using namespace std::chrono_literals;

TEST(SerialQueueTest, RunsTasksOneAtATimeInPostingOrderOnOneWorkerThread) {
    constexpr int posters = 4;
    constexpr int perPoster = 50;
    std::mutex mutex;
    std::map<int, std::vector<int>> seen; // poster -> task numbers in the order they ran
    std::vector<std::thread::id> threads;
    std::atomic<int> running = 0;
    std::atomic<int> mostAtOnce = 0;
    std::promise<void> allDone;
    std::atomic<int> left = posters * perPoster;

    SerialQueue queue;
    std::vector<std::thread> posting;
    for (int poster = 0; poster < posters; ++poster) {
        posting.emplace_back([&, poster] {
            for (int i = 0; i < perPoster; ++i) {
                queue.post([&, poster, i] {
                    mostAtOnce = std::max(mostAtOnce.load(), ++running);
                    std::this_thread::yield();
                    {
                        std::lock_guard lock(mutex);
                        seen[poster].push_back(i);
                        threads.push_back(std::this_thread::get_id());
                    }
                    --running;
                    if (--left == 0) allDone.set_value();
                });
            }
        });
    }
    for (std::thread& thread : posting)
        thread.join();
    ASSERT_EQ(allDone.get_future().wait_for(5s), std::future_status::ready);

    EXPECT_EQ(mostAtOnce, 1);
    std::vector<int> inOrder(perPoster);
    for (int i = 0; i < perPoster; ++i)
        inOrder[i] = i;
    for (int poster = 0; poster < posters; ++poster)
        EXPECT_EQ(seen[poster], inOrder) << poster;
    for (const std::thread::id id : threads) {
        EXPECT_EQ(id, threads.front());
        EXPECT_NE(id, std::this_thread::get_id());
    }
}

TEST(SerialQueueTest, ATaskPostedFromATaskRunsAfterItNotInside) {
    std::vector<std::string> order;
    std::promise<void> done;
    SerialQueue queue;
    queue.post([&] {
        order.push_back("outer begins");
        queue.post([&] {
            order.push_back("inner");
            done.set_value();
        });
        order.push_back("outer ends");
    });
    ASSERT_EQ(done.get_future().wait_for(5s), std::future_status::ready);
    EXPECT_EQ(order, (std::vector<std::string>{"outer begins", "outer ends", "inner"}));
}

TEST(SerialQueueTest, DestructionFinishesTheRunningTaskAndDropsThoseWaiting) {
    std::mutex mutex;
    std::condition_variable changed;
    bool started = false;
    bool released = false; // set when the waiting task is dropped
    bool firstFinished = false;
    std::atomic<bool> waitingRan = false;

    // Let go of when the queue drops the task that holds it.
    auto release = std::shared_ptr<void>(nullptr, [&](void*) {
        std::lock_guard lock(mutex);
        released = true;
        changed.notify_all();
    });

    auto queue = std::make_unique<SerialQueue>();
    queue->post([&] {
        std::unique_lock lock(mutex);
        started = true;
        changed.notify_all();
        changed.wait_for(lock, 5s, [&] { return released; });
        firstFinished = true;
    });
    queue->post([&waitingRan, release] { waitingRan = true; });
    release.reset();
    {
        std::unique_lock lock(mutex);
        ASSERT_TRUE(changed.wait_for(lock, 5s, [&] { return started; }));
    }

    queue.reset();

    std::lock_guard lock(mutex);
    EXPECT_TRUE(released) << "the running task was let go only by the timeout";
    EXPECT_TRUE(firstFinished);
    EXPECT_FALSE(waitingRan);
}

TEST(SerialQueueTest, ATaskThatThrowsDoesNotStopTheQueue) {
    std::promise<void> done;
    SerialQueue queue;
    queue.post([] { throw std::runtime_error("failed"); });
    queue.post([&] { done.set_value(); });
    EXPECT_EQ(done.get_future().wait_for(5s), std::future_status::ready);
}

} // namespace
} // namespace tovrin
