#include "platform/dbus/DBusDesktopNotifier.h"

#include "support/BusObjectThread.h"
#include "support/QtEventLoopTest.h"

#include <QDBusArgument>
#include <QDBusMessage>
#include <QDBusMetaType>
#include <chrono>
#include <deque>
#include <gtest/gtest.h>
#include <memory>
#include <mutex>
#include <vector>

namespace tovrin {
namespace {

using namespace std::chrono_literals;

struct NotifyCall {
    QString appName;
    uint replacesId = 0;
    QString summary;
    QString body;
    QStringList actions;
    QVariantMap hints;
    int timeout = 0;
};

// A notification server for the test: records each Notify and answers with the next id of a
// given list, so that the test can tell which id the client sends back.
class FakeNotificationServer final : public QDBusVirtualObject {
public:
    FakeNotificationServer(QStringList capabilities, std::deque<uint> ids)
        : m_capabilities(std::move(capabilities)), m_ids(std::move(ids)) {}

    std::vector<NotifyCall> calls() const {
        std::lock_guard lock(m_mutex);
        return m_calls;
    }

    QString introspect(const QString&) const override {
        return QStringLiteral("<interface name=\"org.freedesktop.Notifications\"/>");
    }

    bool handleMessage(const QDBusMessage& message, const QDBusConnection& connection) override {
        const QList<QVariant> args = message.arguments();
        if (message.member() == QLatin1String("GetCapabilities"))
            return connection.send(message.createReply(QVariant(m_capabilities)));
        if (message.member() != QLatin1String("Notify") || args.size() != 8) return false;
        uint id = 0;
        {
            std::lock_guard lock(m_mutex);
            m_calls.push_back({args[0].toString(), args[1].toUInt(), args[3].toString(), args[4].toString(),
                               args[5].toStringList(), qdbus_cast<QVariantMap>(args[6]), args[7].toInt()});
            id = m_ids.empty() ? 1000 + uint(m_calls.size()) : m_ids.front();
            if (!m_ids.empty()) m_ids.pop_front();
        }
        return connection.send(message.createReply(QVariant(id)));
    }

private:
    QStringList m_capabilities;
    mutable std::mutex m_mutex;
    std::deque<uint> m_ids;
    std::vector<NotifyCall> m_calls;
};

class DBusDesktopNotifierTest : public test::QtEventLoopTest {
protected:
    void SetUp() override {
        if (!test::onPrivateSessionBus())
            GTEST_SKIP() << "needs the private session bus of run-dbus-tests.sh";
    }

    FakeNotificationServer& startServer(QStringList capabilities = {QStringLiteral("body")},
                                        std::deque<uint> ids = {}) {
        bus.reset();
        server = std::make_unique<FakeNotificationServer>(std::move(capabilities), std::move(ids));
        bus =
            std::make_unique<test::BusObjectThread>(*server, QStringLiteral("/org/freedesktop/Notifications"),
                                                    QStringLiteral("org.freedesktop.Notifications"));
        EXPECT_TRUE(bus->serving());
        return *server;
    }

    // The calls once `count` came, with room for one too many to show up.
    std::vector<NotifyCall> callsAfter(std::size_t count) {
        EXPECT_TRUE(pumpUntil([&] { return server->calls().size() >= count; }));
        pumpFor(100ms);
        return server->calls();
    }

    std::unique_ptr<FakeNotificationServer> server;
    std::unique_ptr<test::BusObjectThread> bus; // declared after the server, so gone before it
};

TEST_F(DBusDesktopNotifierTest, WithoutAServerItIsSilentUntilOneAppears) {
    DBusDesktopNotifier notifier;
    notifier.learnCapabilities();
    notifier.show("Codex is waiting", "proj");
    pumpFor(300ms);

    startServer({}, {5});
    notifier.learnCapabilities();
    notifier.show("Claude Code is waiting", "tovrin");
    const auto calls = callsAfter(1);
    ASSERT_EQ(calls.size(), 1u);
    EXPECT_EQ(calls[0].summary, QStringLiteral("Claude Code is waiting"));
    EXPECT_EQ(calls[0].replacesId, 0u) << "a failed Notify must not leave an id behind";
}

TEST_F(DBusDesktopNotifierTest, EachNotificationReplacesTheIdTheServerGaveTheLastOne) {
    startServer({QStringLiteral("body")}, {7, 12, 30});
    DBusDesktopNotifier notifier;
    notifier.learnCapabilities();

    const std::vector<std::pair<std::string, std::string>> shown{{"Claude Code is waiting", "proj"},
                                                                 {"2 agents are waiting", "Codex, Cursor"},
                                                                 {"Jörð is waiting", "ǫld"}};
    std::vector<NotifyCall> calls;
    for (std::size_t i = 0; i < shown.size(); ++i) {
        notifier.show(shown[i].first, shown[i].second);
        calls = callsAfter(i + 1);
    }

    ASSERT_EQ(calls.size(), 3u);
    const std::vector<uint> expectedReplaces{0, 7, 12};
    for (std::size_t i = 0; i < calls.size(); ++i) {
        SCOPED_TRACE(i);
        EXPECT_EQ(calls[i].appName, QStringLiteral("Tovrin"));
        EXPECT_EQ(calls[i].replacesId, expectedReplaces[i]);
        EXPECT_EQ(calls[i].summary, QString::fromStdString(shown[i].first));
        EXPECT_EQ(calls[i].body, QString::fromStdString(shown[i].second));
        EXPECT_TRUE(calls[i].actions.isEmpty());
        EXPECT_EQ(calls[i].timeout, -1);
        EXPECT_EQ(calls[i].hints.value(QStringLiteral("suppress-sound")), QVariant(true));
    }
}

TEST_F(DBusDesktopNotifierTest, ShowsWhileAnAnswerIsPendingCollapseToTheNewest) {
    startServer({}, {41, 42, 43});
    DBusDesktopNotifier notifier;
    notifier.show("first", "");
    notifier.show("second", "");
    notifier.show("third", "");

    const auto calls = callsAfter(2);
    ASSERT_EQ(calls.size(), 2u);
    EXPECT_EQ(calls[0].summary, QStringLiteral("first"));
    EXPECT_EQ(calls[1].summary, QStringLiteral("third"));
    EXPECT_EQ(calls[1].replacesId, 41u);
}

TEST_F(DBusDesktopNotifierTest, BodyIsEscapedOnlyForServersThatReadMarkup) {
    for (const bool markup : {true, false}) {
        SCOPED_TRACE(markup);
        startServer(markup ? QStringList{QStringLiteral("body"), QStringLiteral("body-markup")}
                           : QStringList{QStringLiteral("body")});
        DBusDesktopNotifier notifier;
        notifier.learnCapabilities();
        notifier.show("a & b", "<proj> & co");
        const auto calls = callsAfter(1);
        ASSERT_EQ(calls.size(), 1u);
        EXPECT_EQ(calls[0].summary, QStringLiteral("a & b"));
        EXPECT_EQ(calls[0].body,
                  markup ? QStringLiteral("&lt;proj&gt; &amp; co") : QStringLiteral("<proj> & co"));
    }
}

} // namespace
} // namespace tovrin
