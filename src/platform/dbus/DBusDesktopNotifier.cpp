#include "platform/dbus/DBusDesktopNotifier.h"

#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QStringList>
#include <QVariantMap>

namespace tovrin {
namespace {

const QString service = QStringLiteral("org.freedesktop.Notifications");
const QString objectPath = QStringLiteral("/org/freedesktop/Notifications");
const QString interface = QStringLiteral("org.freedesktop.Notifications");
constexpr int capabilitiesTimeoutMs = 3000;
constexpr int notifyTimeoutMs = 10000;

} // namespace

DBusDesktopNotifier::DBusDesktopNotifier(QDBusConnection connection) : m_connection(std::move(connection)) {}

DBusDesktopNotifier::~DBusDesktopNotifier() = default;

void DBusDesktopNotifier::learnCapabilities() {
    if (!m_connection.isConnected()) return;
    const QDBusMessage call =
        QDBusMessage::createMethodCall(service, objectPath, interface, QStringLiteral("GetCapabilities"));
    const QDBusMessage reply = m_connection.call(call, QDBus::Block, capabilitiesTimeoutMs);
    if (reply.type() != QDBusMessage::ReplyMessage || reply.arguments().isEmpty()) return;
    m_bodyMarkup = reply.arguments().constFirst().toStringList().contains(QStringLiteral("body-markup"));
}

void DBusDesktopNotifier::show(const std::string& title, const std::string& body) {
    if (!m_connection.isConnected()) return;
    const QString qTitle = QString::fromStdString(title);
    const QString qBody = QString::fromStdString(body);
    if (m_inFlight) {
        m_queued = std::pair{qTitle, qBody};
        return;
    }
    send(qTitle, qBody);
}

void DBusDesktopNotifier::send(const QString& title, const QString& body) {
    QDBusMessage call =
        QDBusMessage::createMethodCall(service, objectPath, interface, QStringLiteral("Notify"));
    // The application plays its own alert sound; the server's would sound on top of it.
    const QVariantMap hints{{QStringLiteral("suppress-sound"), true}};
    call << QStringLiteral("Tovrin") << m_lastId << QString() << title
         << (m_bodyMarkup ? body.toHtmlEscaped() : body) << QStringList() << hints << -1;

    m_inFlight = true;
    auto* watcher = new QDBusPendingCallWatcher(m_connection.asyncCall(call, notifyTimeoutMs), &m_context);
    QObject::connect(watcher, &QDBusPendingCallWatcher::finished, &m_context,
                     [this](QDBusPendingCallWatcher* finished) {
                         const QDBusPendingReply<uint> reply = *finished;
                         finished->deleteLater();
                         // A failed Notify keeps the old id: the next one still replaces what is shown.
                         if (!reply.isError()) m_lastId = reply.value();
                         m_inFlight = false;
                         if (m_queued) {
                             auto [nextTitle, nextBody] = std::move(*m_queued);
                             m_queued.reset();
                             send(nextTitle, nextBody);
                         }
                     });
}

} // namespace tovrin
