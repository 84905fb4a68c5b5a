#include "platform/dbus/PortalGlobalShortcuts.h"

#include "platform/GlobalShortcutsFactory.h"
#include "support/BusObjectThread.h"
#include "support/QtEventLoopTest.h"
#include "support/ScopedEnv.h"

#include <QDBusArgument>
#include <QDBusMessage>
#include <QDBusObjectPath>
#include <QDBusVariant>
#include <atomic>
#include <gtest/gtest.h>
#include <memory>
#include <vector>

namespace tovrin {
namespace {

using namespace std::chrono_literals;

const QString portalPath = QStringLiteral("/org/freedesktop/portal/desktop");

// The desktop portal for the test: creates sessions, answers each bind with `bindAnswer`, and
// records closed sessions and each bind as its session and its shortcuts' ids and triggers.
class FakePortal final : public QDBusVirtualObject {
public:
    std::atomic<uint> bindAnswer = 0;
    // Each list is read once its count shows the entries the test waits for.
    std::vector<std::pair<QString, QStringList>> binds;
    QStringList closed;
    std::atomic<std::size_t> bindCount = 0, closeCount = 0;

    QString introspect(const QString&) const override { return {}; }

    bool handleMessage(const QDBusMessage& message, const QDBusConnection& connection) override {
        const QString member = message.member();
        const QList<QVariant> args = message.arguments();
        if (member == "Get")
            return connection.send(message.createReply(QVariant::fromValue(QDBusVariant(1U))));
        if (member == "Close") {
            closed << message.path();
            ++closeCount;
            return connection.send(message.createReply());
        }
        const auto options = qdbus_cast<QVariantMap>(args.last());
        const QString sender = message.service().mid(1).replace('.', '_');
        const QString request = portalPath + "/request/" + sender + "/" + options["handle_token"].toString();
        connection.send(message.createReply(QVariant::fromValue(QDBusObjectPath(request))));
        QDBusMessage response =
            QDBusMessage::createSignal(request, "org.freedesktop.portal.Request", "Response");
        if (member == "CreateSession") {
            const QString session =
                portalPath + "/session/" + sender + "/" + options["session_handle_token"].toString();
            return connection.send(
                response << 0U
                         << QVariantMap{{"session_handle", QVariant::fromValue(QDBusObjectPath(session))}});
        }
        QStringList shortcuts;
        const auto list = args[1].value<QDBusArgument>();
        list.beginArray();
        while (!list.atEnd()) {
            QString id;
            QVariantMap properties;
            list.beginStructure();
            list >> id >> properties;
            list.endStructure();
            shortcuts << id + " " + properties["preferred_trigger"].toString();
        }
        list.endArray();
        binds.emplace_back(args[0].value<QDBusObjectPath>().path(), shortcuts);
        ++bindCount;
        return connection.send(response << bindAnswer.load() << QVariantMap());
    }
};

class PortalGlobalShortcutsTest : public test::QtEventLoopTest {
protected:
    void SetUp() override {
        // The user's own bus has the real portal, whose dialogs would open.
        if (!test::onPrivateSessionBus())
            GTEST_SKIP() << "needs the private session bus of run-dbus-tests.sh";
    }
    void TearDown() override {
        if (!bus) return;
        bus.reset();
        // Owner changes still queued would tell the next test's connection of this portal.
        pumpFor(50ms);
    }

    void startPortal() {
        bus = std::make_unique<test::BusObjectThread>(fake, portalPath, "org.freedesktop.portal.Desktop",
                                                      QDBusConnection::SubPath);
        ASSERT_TRUE(bus->serving());
    }
    void activate(const QString& session, const QString& id) {
        QDBusMessage signal =
            QDBusMessage::createSignal(portalPath, "org.freedesktop.portal.GlobalShortcuts", "Activated");
        bus->connection().send(signal << QVariant::fromValue(QDBusObjectPath(session)) << id << qulonglong(0)
                                      << QVariantMap());
    }
    // Whether exactly `count` binds came, with room for one too many.
    bool waitForBinds(std::size_t count) {
        pumpUntil([&] { return fake.bindCount >= count; });
        pumpFor(100ms);
        return fake.bindCount == count;
    }

    FakePortal fake;
    std::unique_ptr<test::BusObjectThread> bus;
    test::ScopedEnv wayland{"WAYLAND_DISPLAY", "wayland-0"};
    const Shortcut ctrlAltE{'e', ShortcutModifier::control | ShortcutModifier::alt};
    const Shortcut ctrlAltT{'t', ShortcutModifier::control | ShortcutModifier::alt};
};

TEST_F(PortalGlobalShortcutsTest, WithoutThePortalNothingIsOfferedAndX11GrabsAreChosen) {
    PortalGlobalShortcuts shortcuts;
    EXPECT_FALSE(shortcuts.available());
    EXPECT_EQ(shortcuts.registerShortcut(ctrlAltE), ShortcutRegistration::failed);
    EXPECT_EQ(dynamic_cast<PortalGlobalShortcuts*>(makeGlobalShortcuts().get()), nullptr);

    startPortal();
    EXPECT_NE(dynamic_cast<PortalGlobalShortcuts*>(makeGlobalShortcuts().get()), nullptr);
    EXPECT_TRUE(shortcuts.available());
}

TEST_F(PortalGlobalShortcutsTest, BoundShortcutsFireAndEachChangeBindsTheWholeSetInANewSession) {
    startPortal();
    PortalGlobalShortcuts shortcuts;
    std::vector<Shortcut> pressed;
    shortcuts.setPressedHandler([&](const Shortcut& shortcut) { pressed.push_back(shortcut); });

    ASSERT_EQ(shortcuts.registerShortcut(ctrlAltE), ShortcutRegistration::registered);
    ASSERT_TRUE(waitForBinds(1));
    // A probe, taken back in the same turn: the compositor never shows it.
    shortcuts.registerShortcut(ctrlAltT);
    shortcuts.unregisterShortcut(ctrlAltT);
    ASSERT_TRUE(waitForBinds(1));
    const auto [first, firstShortcuts] = fake.binds.at(0);
    EXPECT_EQ(firstShortcuts, QStringList{"CTRL+ALT+e CTRL+ALT+e"});

    activate(portalPath + "/session/other/tovrin1", "CTRL+ALT+e");
    activate(first, "CTRL+ALT+t");
    activate(first, "CTRL+ALT+e");
    ASSERT_TRUE(pumpUntil([&] { return !pressed.empty(); }));
    pumpFor(100ms);
    EXPECT_EQ(pressed, std::vector<Shortcut>{ctrlAltE}) << "only our session's bound shortcut counts";

    shortcuts.registerShortcut(ctrlAltT);
    ASSERT_TRUE(waitForBinds(2));
    EXPECT_NE(fake.binds.at(1).first, first);
    EXPECT_EQ(fake.binds.at(1).second, (QStringList{"CTRL+ALT+e CTRL+ALT+e", "CTRL+ALT+t CTRL+ALT+t"}));
    EXPECT_EQ(fake.closed, QStringList{first});

    // Cancelled in the dialog: told once, and not asked again.
    fake.bindAnswer = 1;
    testing::internal::CaptureStdout();
    shortcuts.unregisterShortcut(ctrlAltE);
    const bool once = waitForBinds(3);
    EXPECT_EQ(testing::internal::GetCapturedStdout(),
              "Error registering hotkey Ctrl+Alt+T: cancelled in the desktop's dialog\n");
    EXPECT_TRUE(once);

    shortcuts.unregisterShortcut(ctrlAltT);
    EXPECT_TRUE(pumpUntil([&] { return fake.closeCount == 3; }));
    EXPECT_TRUE(waitForBinds(3)) << "nothing left to bind";
}

} // namespace
} // namespace tovrin
