#include "platform/secrets/SecretServiceClient.h"

#include "platform/secrets/SecretPrompt.h"

#include <QDBusArgument>
#include <QDBusMessage>
#include <QDBusMetaType>
#include <QDBusVariant>
#include <QVariantMap>
#include <utility>

namespace tovrin {
namespace {

const QString serviceName = QStringLiteral("org.freedesktop.secrets");
const QString servicePath = QStringLiteral("/org/freedesktop/secrets");
const QString serviceInterface = QStringLiteral("org.freedesktop.Secret.Service");
const QString collectionInterface = QStringLiteral("org.freedesktop.Secret.Collection");
const QString itemInterface = QStringLiteral("org.freedesktop.Secret.Item");
const QString sessionInterface = QStringLiteral("org.freedesktop.Secret.Session");
const QString propertiesInterface = QStringLiteral("org.freedesktop.DBus.Properties");
constexpr int callTimeoutMs = 10000;
const QDBusObjectPath noObject(QStringLiteral("/"));

// The wire form of a secret: (session, parameters, value, content type).
struct WireSecret {
    QDBusObjectPath session;
    QByteArray parameters;
    QByteArray value;
    QString contentType;
};

QDBusArgument& operator<<(QDBusArgument& out, const WireSecret& secret) {
    out.beginStructure();
    out << secret.session << secret.parameters << secret.value << secret.contentType;
    out.endStructure();
    return out;
}

const QDBusArgument& operator>>(const QDBusArgument& in, WireSecret& secret) {
    in.beginStructure();
    in >> secret.session >> secret.parameters >> secret.value >> secret.contentType;
    in.endStructure();
    return in;
}

void registerTypes() {
    static const bool registered = [] {
        qDBusRegisterMetaType<WireSecret>();
        qDBusRegisterMetaType<QMap<QString, QString>>();
        qDBusRegisterMetaType<QMap<QDBusObjectPath, WireSecret>>();
        return true;
    }();
    (void)registered;
}

QDBusMessage methodCall(const QString& path, const QString& interface, const QString& method) {
    return QDBusMessage::createMethodCall(serviceName, path, interface, method);
}

std::optional<QList<QVariant>> callFor(const QDBusConnection& connection, const QDBusMessage& call) {
    const QDBusMessage reply = connection.call(call, QDBus::Block, callTimeoutMs);
    if (reply.type() != QDBusMessage::ReplyMessage) return std::nullopt;
    return reply.arguments();
}

template <typename T> T argumentAs(const QVariant& argument) {
    return qdbus_cast<T>(argument);
}

// A "plain" session, closed when it goes out of scope.
class PlainSession {
public:
    explicit PlainSession(const QDBusConnection& connection) : m_connection(connection) {
        QDBusMessage call = methodCall(servicePath, serviceInterface, QStringLiteral("OpenSession"));
        call << QStringLiteral("plain") << QVariant::fromValue(QDBusVariant(QString()));
        const auto reply = callFor(m_connection, call);
        if (reply && reply->size() == 2) m_path = argumentAs<QDBusObjectPath>(reply->at(1));
    }
    ~PlainSession() {
        if (isOpen())
            m_connection.call(methodCall(m_path.path(), sessionInterface, QStringLiteral("Close")),
                              QDBus::NoBlock);
    }
    PlainSession(const PlainSession&) = delete;
    PlainSession& operator=(const PlainSession&) = delete;

    bool isOpen() const { return !m_path.path().isEmpty() && m_path != noObject; }
    const QDBusObjectPath& path() const { return m_path; }

private:
    QDBusConnection m_connection;
    QDBusObjectPath m_path;
};

} // namespace

SecretServiceClient::SecretServiceClient(QDBusConnection connection, std::chrono::milliseconds promptTimeout)
    : m_connection(std::move(connection)), m_promptTimeout(promptTimeout) {
    registerTypes();
}

QList<QDBusObjectPath> SecretServiceClient::search(const Attributes& attributes, bool unlockLocked) const {
    QDBusMessage call = methodCall(servicePath, serviceInterface, QStringLiteral("SearchItems"));
    call << QVariant::fromValue(attributes);
    const auto reply = callFor(m_connection, call);
    if (!reply || reply->size() != 2) return {};
    auto unlocked = argumentAs<QList<QDBusObjectPath>>(reply->at(0));
    const auto locked = argumentAs<QList<QDBusObjectPath>>(reply->at(1));
    if (unlockLocked && !locked.isEmpty()) unlocked += unlock(locked, itemInterface);
    return unlocked;
}

std::optional<QByteArray> SecretServiceClient::secret(const QDBusObjectPath& item) const {
    PlainSession session(m_connection);
    if (!session.isOpen()) return std::nullopt;
    QDBusMessage call = methodCall(servicePath, serviceInterface, QStringLiteral("GetSecrets"));
    call << QVariant::fromValue(QList<QDBusObjectPath>{item}) << QVariant::fromValue(session.path());
    const auto reply = callFor(m_connection, call);
    if (!reply || reply->size() != 1) return std::nullopt;
    const auto secrets = argumentAs<QMap<QDBusObjectPath, WireSecret>>(reply->at(0));
    const auto found = secrets.constFind(item);
    if (found == secrets.constEnd()) return std::nullopt;
    return found->value;
}

std::optional<QDBusObjectPath> SecretServiceClient::store(const QString& label, const Attributes& attributes,
                                                          const QByteArray& secret,
                                                          const QString& contentType) const {
    const auto collection = defaultCollection();
    if (!collection) return std::nullopt;
    if (isLocked(*collection, collectionInterface) && unlock({*collection}, collectionInterface).isEmpty())
        return std::nullopt;
    PlainSession session(m_connection);
    if (!session.isOpen()) return std::nullopt;

    const QVariantMap properties{
        {itemInterface + QStringLiteral(".Label"), label},
        {itemInterface + QStringLiteral(".Attributes"), QVariant::fromValue(attributes)},
    };
    QDBusMessage call = methodCall(collection->path(), collectionInterface, QStringLiteral("CreateItem"));
    call << properties << QVariant::fromValue(WireSecret{session.path(), {}, secret, contentType}) << true;
    const auto reply = callFor(m_connection, call);
    if (!reply || reply->size() != 2) return std::nullopt;
    const auto item = argumentAs<QDBusObjectPath>(reply->at(0));
    if (item != noObject) return item;
    // The service wants the user's word first; the item exists once they give it.
    if (!prompt(argumentAs<QDBusObjectPath>(reply->at(1)))) return std::nullopt;
    const auto stored = search(attributes, false);
    if (stored.isEmpty()) return std::nullopt;
    return stored.constFirst();
}

bool SecretServiceClient::remove(const QDBusObjectPath& item) const {
    const auto reply =
        callFor(m_connection, methodCall(item.path(), itemInterface, QStringLiteral("Delete")));
    if (!reply || reply->size() != 1) return false;
    const auto promptPath = argumentAs<QDBusObjectPath>(reply->at(0));
    return promptPath == noObject || prompt(promptPath);
}

QList<QDBusObjectPath> SecretServiceClient::unlock(const QList<QDBusObjectPath>& objects,
                                                   const QString& interface) const {
    QDBusMessage call = methodCall(servicePath, serviceInterface, QStringLiteral("Unlock"));
    call << QVariant::fromValue(objects);
    const auto reply = callFor(m_connection, call);
    if (!reply || reply->size() != 2) return {};
    auto unlocked = argumentAs<QList<QDBusObjectPath>>(reply->at(0));
    const auto promptPath = argumentAs<QDBusObjectPath>(reply->at(1));
    if (promptPath == noObject || !prompt(promptPath)) return unlocked;
    // Which objects the prompt unlocked is asked of them rather than read from its result.
    unlocked.clear();
    for (const auto& object : objects) {
        if (!isLocked(object, interface)) unlocked.push_back(object);
    }
    return unlocked;
}

std::optional<QDBusObjectPath> SecretServiceClient::defaultCollection() const {
    QDBusMessage call = methodCall(servicePath, serviceInterface, QStringLiteral("ReadAlias"));
    call << QStringLiteral("default");
    const auto reply = callFor(m_connection, call);
    if (!reply || reply->size() != 1) return std::nullopt;
    const auto collection = argumentAs<QDBusObjectPath>(reply->at(0));
    if (collection == noObject || collection.path().isEmpty()) return std::nullopt;
    return collection;
}

bool SecretServiceClient::isLocked(const QDBusObjectPath& object, const QString& interface) const {
    QDBusMessage call = methodCall(object.path(), propertiesInterface, QStringLiteral("Get"));
    call << interface << QStringLiteral("Locked");
    const auto reply = callFor(m_connection, call);
    // An object that can't say counts as locked: nothing is read from or written into it then.
    if (!reply || reply->size() != 1) return true;
    return argumentAs<QDBusVariant>(reply->at(0)).variant().toBool();
}

bool SecretServiceClient::prompt(const QDBusObjectPath& promptPath) const {
    return completeSecretPrompt(m_connection, promptPath, m_promptTimeout);
}

} // namespace tovrin
