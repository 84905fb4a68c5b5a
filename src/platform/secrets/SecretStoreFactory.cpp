#include "platform/secrets/SecretStoreFactory.h"

#include "platform/secrets/FileSecretStore.h"
#include "platform/secrets/SecretServiceStore.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <atomic>
#include <cmath>

namespace tovrin {

std::string ChosenSecretStore::notice() const {
    if (!fallbackFile) return {};
    return "No Secret Service is running, so the Telegram token is kept in " + fallbackFile->string() +
           ", readable only by you.";
}

bool secretServiceAnswers(Seconds timeout) {
    // A connection of its own, to the address the environment names now: a shared one would
    // keep answering for the bus it first reached.
    static std::atomic<int> probes{0};
    const QString name = QStringLiteral("tovrin-secret-service-probe-%1").arg(probes++);
    const QString address = qEnvironmentVariable("DBUS_SESSION_BUS_ADDRESS");
    bool answered = false;
    {
        const QDBusConnection connection =
            address.isEmpty() ? QDBusConnection::connectToBus(QDBusConnection::SessionBus, name)
                              : QDBusConnection::connectToBus(address, name);
        if (connection.isConnected()) {
            // Reading a property of the service needs the service itself to answer, not just the bus.
            QDBusMessage call = QDBusMessage::createMethodCall(
                QStringLiteral("org.freedesktop.secrets"), QStringLiteral("/org/freedesktop/secrets"),
                QStringLiteral("org.freedesktop.DBus.Properties"), QStringLiteral("Get"));
            call << QStringLiteral("org.freedesktop.Secret.Service") << QStringLiteral("Collections");
            const QDBusMessage reply =
                connection.call(call, QDBus::Block, static_cast<int>(std::lround(timeout.count() * 1000)));
            answered = reply.type() == QDBusMessage::ReplyMessage;
        }
    }
    QDBusConnection::disconnectFromBus(name);
    return answered;
}

ChosenSecretStore chooseSecretStore(const std::string& service, std::filesystem::path fallbackFile,
                                    Seconds probeTimeout) {
    if (secretServiceAnswers(probeTimeout))
        return {std::make_unique<SecretServiceStore>(service), std::nullopt};
    if (fallbackFile.empty()) fallbackFile = FileSecretStore::defaultFile();
    return {std::make_unique<FileSecretStore>(fallbackFile), fallbackFile};
}

} // namespace tovrin
