#include "platform/dbus/DBusFolderRevealer.h"

#include "support/FakeFocusPorts.h"
#include "support/QtEventLoopTest.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusVirtualObject>
#include <QThread>
#include <cstdlib>
#include <gtest/gtest.h>
#include <memory>
#include <mutex>

namespace tovrin {
namespace {

// A file manager for the test: records the arguments of each ShowItems.
class FakeFileManager final : public QDBusVirtualObject {
public:
    std::vector<std::pair<QStringList, QString>> calls() const {
        std::lock_guard lock(m_mutex);
        return m_calls;
    }
    QString introspect(const QString&) const override {
        return QStringLiteral("<interface name=\"org.freedesktop.FileManager1\"/>");
    }
    bool handleMessage(const QDBusMessage& message, const QDBusConnection& connection) override {
        const QList<QVariant> args = message.arguments();
        if (message.member() != QLatin1String("ShowItems") || args.size() != 2) return false;
        {
            std::lock_guard lock(m_mutex);
            m_calls.emplace_back(args[0].toStringList(), args[1].toString());
        }
        return connection.send(message.createReply());
    }

private:
    mutable std::mutex m_mutex;
    std::vector<std::pair<QStringList, QString>> m_calls;
};

class DBusFolderRevealerTest : public test::QtEventLoopTest {
protected:
    void TearDown() override {
        if (!server) return;
        QDBusConnection bus(serverConnection);
        bus.unregisterService(QStringLiteral("org.freedesktop.FileManager1"));
        bus.unregisterObject(QStringLiteral("/org/freedesktop/FileManager1"));
        QDBusConnection::disconnectFromBus(serverConnection);
        serverThread.quit();
        serverThread.wait();
    }

    // On a connection and thread of its own, as another process would be, so that the revealer's
    // blocking call can be answered.
    void startServer() {
        server = std::make_unique<FakeFileManager>();
        server->moveToThread(&serverThread);
        serverThread.start();
        QDBusConnection bus = QDBusConnection::connectToBus(QDBusConnection::SessionBus, serverConnection);
        ASSERT_TRUE(bus.isConnected());
        ASSERT_TRUE(bus.registerVirtualObject(QStringLiteral("/org/freedesktop/FileManager1"), server.get()));
        ASSERT_TRUE(bus.registerService(QStringLiteral("org.freedesktop.FileManager1")));
    }

    // On the user's own bus the real file manager would answer, and open windows.
    static bool privateBus() { return std::getenv("TOVRIN_PRIVATE_SESSION_BUS") != nullptr; }

    test::FocusLog log;
    test::FakeProcessRunner processes{log};
    test::RecordingShell shell{processes, log, {"/usr/bin/xdg-open"}};
    const QString serverConnection = QStringLiteral("tovrin-test-file-manager");
    QThread serverThread;
    std::unique_ptr<FakeFileManager> server;
};

TEST_F(DBusFolderRevealerTest, AsksTheFileManagerToShowTheItem) {
    if (!privateBus()) GTEST_SKIP() << "needs the private session bus of run-dbus-tests.sh";
    startServer();
    DBusFolderRevealer revealer(shell);

    revealer.reveal("/w/my proj");
    revealer.reveal("/w/other/");

    const auto calls = server->calls();
    ASSERT_EQ(calls.size(), 2u);
    EXPECT_EQ(calls[0].first, QStringList{QStringLiteral("file:///w/my%20proj")});
    EXPECT_EQ(calls[0].second, QString());
    EXPECT_EQ(calls[1].first, QStringList{QStringLiteral("file:///w/other")});
    EXPECT_EQ(log.entries(), std::vector<std::string>{}) << "no fallback when the file manager answered";
}

TEST_F(DBusFolderRevealerTest, WithoutAFileManagerOnTheBusOpensTheParentFolder) {
    if (!privateBus()) GTEST_SKIP() << "needs the private session bus of run-dbus-tests.sh";
    DBusFolderRevealer revealer(shell);
    revealer.reveal("/w/proj");
    EXPECT_EQ(log.entries(), std::vector<std::string>{"start /usr/bin/xdg-open /w"});
}

TEST_F(DBusFolderRevealerTest, WithoutABusOpensTheParentFolder) {
    DBusFolderRevealer revealer(shell, QDBusConnection(QStringLiteral("tovrin-no-such-connection")));
    const std::vector<std::pair<std::string, std::string>> cases{
        {"/w/proj", "/w"}, {"/w/proj/", "/w"}, {"/proj", "/"}, {"/", "/"}};
    for (const auto& [path, parent] : cases) {
        log.clear();
        revealer.reveal(path);
        EXPECT_EQ(log.entries(), std::vector<std::string>{"start /usr/bin/xdg-open " + parent}) << path;
    }
    log.clear();
    revealer.reveal("");
    EXPECT_EQ(log.entries(), std::vector<std::string>{});
}

} // namespace
} // namespace tovrin
