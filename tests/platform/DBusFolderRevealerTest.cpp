#include "platform/dbus/DBusFolderRevealer.h"

#include "support/BusObjectThread.h"
#include "support/FakeFocusPorts.h"
#include "support/QtEventLoopTest.h"

#include <QDBusMessage>
#include <gtest/gtest.h>
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
    test::FocusLog log;
    test::FakeProcessRunner processes{log};
    test::RecordingShell shell{processes, log, {"/usr/bin/xdg-open"}};
};

// Without a file manager on the bus the parent folder opens instead; once one is there, it is asked.
TEST_F(DBusFolderRevealerTest, AsksTheFileManagerToShowTheItemElseOpensTheParentFolder) {
    if (!test::onPrivateSessionBus()) GTEST_SKIP() << "needs the private session bus of run-dbus-tests.sh";
    DBusFolderRevealer revealer(shell);
    revealer.reveal("/w/proj");
    EXPECT_EQ(log.entries(), std::vector<std::string>{"start /usr/bin/xdg-open /w"});

    log.clear();
    FakeFileManager server;
    const test::BusObjectThread bus(server, QStringLiteral("/org/freedesktop/FileManager1"),
                                    QStringLiteral("org.freedesktop.FileManager1"));
    ASSERT_TRUE(bus.serving());
    revealer.reveal("/w/my proj");
    revealer.reveal("/w/other/");

    const auto calls = server.calls();
    ASSERT_EQ(calls.size(), 2u);
    EXPECT_EQ(calls[0].first, QStringList{QStringLiteral("file:///w/my%20proj")});
    EXPECT_EQ(calls[0].second, QString());
    EXPECT_EQ(calls[1].first, QStringList{QStringLiteral("file:///w/other")});
    EXPECT_EQ(log.entries(), std::vector<std::string>{}) << "no fallback when the file manager answered";
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
