#pragma once

#include <QByteArray>
#include <QDBusConnection>
#include <QDBusObjectPath>
#include <QList>
#include <QMap>
#include <QString>
#include <chrono>
#include <optional>

namespace tovrin {

// A synchronous client of the desktop's Secret Service (org.freedesktop.secrets) over D-Bus.
// Secrets travel in a "plain" session: the session bus belongs to the user alone, and this
// spares a key exchange and its cryptography. Every call blocks the calling thread; a locked
// keyring asks the user through the service's own prompt, which may take as long as they do.
class SecretServiceClient {
public:
    using Attributes = QMap<QString, QString>;

    explicit SecretServiceClient(QDBusConnection connection = QDBusConnection::sessionBus(),
                                 std::chrono::milliseconds promptTimeout = std::chrono::minutes(2));

    // Items of every collection whose attributes include all of `attributes`. Locked ones are
    // unlocked first when `unlockLocked` is set; those that stay locked are left out.
    QList<QDBusObjectPath> search(const Attributes& attributes, bool unlockLocked = true) const;
    // The item's secret, or nothing when it can't be read.
    std::optional<QByteArray> secret(const QDBusObjectPath& item) const;
    // Stores an item in the default collection, replacing the one with the same attributes
    // there; returns it, or nothing on failure.
    std::optional<QDBusObjectPath> store(const QString& label, const Attributes& attributes,
                                         const QByteArray& secret, const QString& contentType) const;
    bool remove(const QDBusObjectPath& item) const;

private:
    // Unlocks the objects (items or collections, by `interface`), prompting if the service asks
    // to; returns those now unlocked.
    QList<QDBusObjectPath> unlock(const QList<QDBusObjectPath>& objects, const QString& interface) const;
    std::optional<QDBusObjectPath> defaultCollection() const;
    bool isLocked(const QDBusObjectPath& object, const QString& interface) const;
    bool prompt(const QDBusObjectPath& prompt) const;

    QDBusConnection m_connection;
    std::chrono::milliseconds m_promptTimeout;
};

} // namespace tovrin
