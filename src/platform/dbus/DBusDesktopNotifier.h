#pragma once

#include "alerts/DesktopNotifier.h"

#include <QDBusConnection>
#include <QObject>
#include <QString>
#include <optional>
#include <utility>

namespace tovrin {

// Desktop notifications through org.freedesktop.Notifications. Each notification names the id of
// the one before it as the one to replace, so only the latest stays on screen. Notify is sent
// without waiting, and its answer arrives on the event loop of the thread that built the notifier;
// a show() while one is still unanswered waits for that answer, and only the newest waiting one
// is sent then, so the replacement chain never breaks.
class DBusDesktopNotifier final : public DesktopNotifier {
public:
    explicit DBusDesktopNotifier(QDBusConnection connection = QDBusConnection::sessionBus());
    ~DBusDesktopNotifier() override;
    DBusDesktopNotifier(const DBusDesktopNotifier&) = delete;
    DBusDesktopNotifier& operator=(const DBusDesktopNotifier&) = delete;

    // Asks the server for its capabilities, which also starts a server that the bus can activate;
    // blocks for at most a few seconds.
    void learnCapabilities() override;
    void show(const std::string& title, const std::string& body) override;

private:
    void send(const QString& title, const QString& body);

    QDBusConnection m_connection;
    uint m_lastId = 0;
    bool m_bodyMarkup = false; // the server reads the body as markup, so it must be escaped
    bool m_inFlight = false;
    std::optional<std::pair<QString, QString>> m_queued;
    QObject m_context; // owns the reply watchers: answers that come after destruction go nowhere
};

} // namespace tovrin
