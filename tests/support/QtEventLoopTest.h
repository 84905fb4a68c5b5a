#pragma once

#include <QCoreApplication>
#include <QEventLoop>
#include <chrono>
#include <functional>
#include <gtest/gtest.h>
#include <memory>
#include <thread>

namespace tovrin::test {

// A suite with a QCoreApplication, and ways to run its event loop for a while.
class QtEventLoopTest : public ::testing::Test {
protected:
    static void SetUpTestSuite() {
        if (!QCoreApplication::instance()) s_app = std::make_unique<QCoreApplication>(s_argc, s_argv);
    }
    static void TearDownTestSuite() { s_app.reset(); }

    // Runs the event loop until `done` holds or the time is up; returns whether it held.
    static bool pumpUntil(const std::function<bool()>& done,
                          std::chrono::milliseconds timeout = std::chrono::seconds(5)) {
        const auto deadline = std::chrono::steady_clock::now() + timeout;
        while (!done()) {
            if (std::chrono::steady_clock::now() > deadline) return false;
            QCoreApplication::processEvents(QEventLoop::AllEvents, 5);
            std::this_thread::sleep_for(std::chrono::milliseconds(1));
        }
        return true;
    }
    static void pumpFor(std::chrono::milliseconds duration) {
        pumpUntil([] { return false; }, duration);
    }

private:
    static inline int s_argc = 1;
    static inline char s_name[] = "tovrin_platform_tests";
    static inline char* s_argv[] = {s_name, nullptr};
    static inline std::unique_ptr<QCoreApplication> s_app;
};

} // namespace tovrin::test
