#include "platform/dbus/WindowRequests.h"

#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QDBusReply>
#include <thread>

namespace tovrin {

WindowRequests::Outcome WindowRequests::request(const std::string& window, std::chrono::milliseconds wait) {
    auto bus = QDBusConnection::sessionBus();
    if (!bus.isConnected()) return Outcome::noApplication;
    const auto deadline = std::chrono::steady_clock::now() + wait;
    for (;;) {
        if (bus.interface()->isServiceRegistered(QString::fromLatin1(serviceName))) {
            auto call = QDBusMessage::createMethodCall(
                QString::fromLatin1(serviceName), QString::fromLatin1(objectPath),
                QString::fromLatin1(interfaceName), QStringLiteral("Show"));
            call << QString::fromStdString(window);
            const QDBusReply<bool> reply = bus.call(call, QDBus::Block, 5000);
            if (!reply.isValid()) return Outcome::noApplication;
            return reply.value() ? Outcome::shown : Outcome::refused;
        }
        if (std::chrono::steady_clock::now() >= deadline) return Outcome::noApplication;
        std::this_thread::sleep_for(std::chrono::milliseconds(100));
    }
}

WindowRequestService::WindowRequestService(std::function<bool(const std::string&)> show)
    : m_show(std::move(show)) {}

WindowRequestService::~WindowRequestService() {
    if (!m_published) return;
    auto bus = QDBusConnection::sessionBus();
    bus.unregisterObject(QString::fromLatin1(WindowRequests::objectPath));
    bus.unregisterService(QString::fromLatin1(WindowRequests::serviceName));
}

bool WindowRequestService::publish() {
    auto bus = QDBusConnection::sessionBus();
    if (!bus.isConnected()) return false;
    if (!bus.registerObject(QString::fromLatin1(WindowRequests::objectPath), this,
                            QDBusConnection::ExportScriptableSlots))
        return false;
    m_published = bus.registerService(QString::fromLatin1(WindowRequests::serviceName));
    if (!m_published) bus.unregisterObject(QString::fromLatin1(WindowRequests::objectPath));
    return m_published;
}

bool WindowRequestService::Show(const QString& window) {
    return m_show(window.toStdString());
}

} // namespace tovrin
