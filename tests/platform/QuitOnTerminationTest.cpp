#include "platform/qt/QuitOnTermination.h"

#include "support/QtEventLoopTest.h"

#include <QTimer>
#include <csignal>
#include <gtest/gtest.h>

namespace tovrin {
namespace {

class QuitOnTerminationTest : public test::QtEventLoopTest {};

// Each signal ends the loop as Quit does (exit code 0) rather than killing the process; a watchdog
// fails the case instead of hanging it.
TEST_F(QuitOnTerminationTest, EachTerminationSignalEndsTheEventLoopCleanly) {
    for (const int signal : {SIGTERM, SIGINT, SIGHUP}) {
        QuitOnTermination quitOnTermination;
        QTimer::singleShot(0, [signal] { std::raise(signal); });
        QTimer watchdog;
        watchdog.setSingleShot(true);
        QObject::connect(&watchdog, &QTimer::timeout, [] { QCoreApplication::exit(1); });
        watchdog.start(5000);
        EXPECT_EQ(QCoreApplication::exec(), 0) << "signal " << signal;
    }
}

} // namespace
} // namespace tovrin
