#pragma once

#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QDBusVirtualObject>
#include <QThread>
#include <atomic>
#include <cstdlib>

namespace tovrin::test {

// Whether this runs on the private session bus of run-dbus-tests.sh: services the tests own there
// would, on the user's own bus, fight the real ones or open their windows.
inline bool onPrivateSessionBus() {
    return std::getenv("TOVRIN_PRIVATE_SESSION_BUS") != nullptr;
}

// A test's stand-in for another process on the session bus: the object serves a name from a
// connection and a thread of its own, so that blocking calls of the code under test are answered.
// The object must outlive this.
class BusObjectThread {
public:
    BusObjectThread(QDBusVirtualObject& object, const QString& path, const QString& service,
                    QDBusConnection::VirtualObjectRegisterOption option = QDBusConnection::SingleNode)
        : m_name(QStringLiteral("tovrin-test-service-%1").arg(++s_count)), m_path(path), m_service(service) {
        QDBusConnection bus = QDBusConnection::connectToBus(QDBusConnection::SessionBus, m_name);
        // Registered before the move: the bus gives the object a child, which must share its thread.
        m_serving = bus.isConnected() && bus.registerVirtualObject(path, &object, option);
        object.moveToThread(&m_thread);
        m_thread.start();
        m_serving = m_serving && bus.registerService(service);
    }
    ~BusObjectThread() {
        QDBusConnection bus = connection();
        bus.unregisterService(m_service);
        bus.unregisterObject(m_path);
        QDBusConnection::disconnectFromBus(m_name);
        m_thread.quit();
        m_thread.wait();
    }
    BusObjectThread(const BusObjectThread&) = delete;
    BusObjectThread& operator=(const BusObjectThread&) = delete;

    bool serving() const { return m_serving; }
    QDBusConnection connection() const { return QDBusConnection(m_name); }

private:
    static inline std::atomic<int> s_count = 0;
    QString m_name;
    QString m_path;
    QString m_service;
    QThread m_thread;
    bool m_serving = false;
};

} // namespace tovrin::test
