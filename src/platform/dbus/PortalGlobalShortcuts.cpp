// moc can't read the C++20 <compare> that the shortcut types bring in, and needs none of them.
#ifndef Q_MOC_RUN
#include "platform/dbus/PortalGlobalShortcuts.h"
#endif

#include <QDBusArgument>
#include <QDBusMessage>
#include <QDBusMetaType>
#include <QDBusObjectPath>
#include <QDBusPendingCallWatcher>
#include <QDBusVariant>
#include <QList>
#include <QMetaObject>
#include <array>
#include <iostream>
#include <utility>
#include <xkbcommon/xkbcommon.h>

namespace tovrin {
namespace {

const QString service = QStringLiteral("org.freedesktop.portal.Desktop");
const QString desktopPath = QStringLiteral("/org/freedesktop/portal/desktop");
const QString shortcutsInterface = QStringLiteral("org.freedesktop.portal.GlobalShortcuts");
const QString requestInterface = QStringLiteral("org.freedesktop.portal.Request");
const QString sessionInterface = QStringLiteral("org.freedesktop.portal.Session");
constexpr int versionTimeoutMs = 2000;
constexpr unsigned responseSuccess = 0;
constexpr unsigned responseCancelled = 1;
constexpr unsigned responseFailed = 2;

// One entry of BindShortcuts' a(sa{sv}).
struct PortalShortcut {
    QString id;
    QVariantMap properties;
};

QDBusArgument& operator<<(QDBusArgument& argument, const PortalShortcut& shortcut) {
    argument.beginStructure();
    argument << shortcut.id << shortcut.properties;
    argument.endStructure();
    return argument;
}

const QDBusArgument& operator>>(const QDBusArgument& argument, PortalShortcut& shortcut) {
    argument.beginStructure();
    argument >> shortcut.id >> shortcut.properties;
    argument.endStructure();
    return argument;
}

// The portal puts request and session objects under the caller's unique name, ":1.42" as "1_42".
QString senderElement(const QDBusConnection& connection) {
    QString name = connection.baseService();
    if (name.startsWith(QLatin1Char(':'))) name.remove(0, 1);
    return name.replace(QLatin1Char('.'), QLatin1Char('_'));
}

QString token() {
    // Unique across instances on one connection, whose request paths share a folder.
    static unsigned count = 0;
    return QStringLiteral("tovrin%1").arg(++count);
}

QString triggerText(const Shortcut& shortcut) {
    return QString::fromStdString(portalTrigger(shortcut).value_or(std::string()));
}

// Qt DBus hands signals only to slots. Calls `answered` once, with the Response of a request.
class ResponseReceiver final : public QObject {
    Q_OBJECT
public:
    using Answer = std::function<void(unsigned, const QVariantMap&)>;

    ResponseReceiver(QDBusConnection connection, Answer answered, QObject* parent)
        : QObject(parent), m_connection(std::move(connection)), m_answered(std::move(answered)) {}
    ~ResponseReceiver() override { watch({}); }
    ResponseReceiver(const ResponseReceiver&) = delete;
    ResponseReceiver& operator=(const ResponseReceiver&) = delete;

    void watch(const QString& path) {
        if (!m_path.isEmpty())
            m_connection.disconnect(service, m_path, requestInterface, QStringLiteral("Response"), this,
                                    SLOT(response(uint, QVariantMap)));
        m_path = path;
        if (!m_path.isEmpty())
            m_connection.connect(service, m_path, requestInterface, QStringLiteral("Response"), this,
                                 SLOT(response(uint, QVariantMap)));
    }

    void answer(unsigned code, const QVariantMap& results) {
        watch({});
        deleteLater();
        if (Answer answered = std::exchange(m_answered, {})) answered(code, results);
    }

public slots:
    void response(uint code, const QVariantMap& results) { answer(code, results); }

private:
    QDBusConnection m_connection;
    QString m_path;
    Answer m_answered;
};

class ActivationReceiver final : public QObject {
    Q_OBJECT
public:
    using Activated = std::function<void(const QString& session, const QString& id)>;

    ActivationReceiver(QDBusConnection connection, Activated activated, QObject* parent)
        : QObject(parent), m_connection(std::move(connection)), m_activated(std::move(activated)) {
        m_connection.connect(service, desktopPath, shortcutsInterface, QStringLiteral("Activated"), this,
                             SLOT(activated(QDBusMessage)));
    }
    ~ActivationReceiver() override {
        m_connection.disconnect(service, desktopPath, shortcutsInterface, QStringLiteral("Activated"), this,
                                SLOT(activated(QDBusMessage)));
    }
    ActivationReceiver(const ActivationReceiver&) = delete;
    ActivationReceiver& operator=(const ActivationReceiver&) = delete;

public slots:
    // The whole message: Qt 6.4 can't hand an object path to a slot that names it as a parameter.
    void activated(const QDBusMessage& message) {
        const QList<QVariant> arguments = message.arguments();
        if (arguments.size() < 2) return;
        m_activated(arguments[0].value<QDBusObjectPath>().path(), arguments[1].toString());
    }

private:
    QDBusConnection m_connection;
    Activated m_activated;
};

} // namespace

std::optional<std::string> portalTrigger(const Shortcut& shortcut) {
    std::array<char, 64> name{};
    if (shortcut.keySym == 0 || xkb_keysym_get_name(shortcut.keySym, name.data(), name.size()) <= 0)
        return std::nullopt;
    static constexpr std::array<std::pair<std::uint32_t, const char*>, 4> modifiers{{
        {ShortcutModifier::control, "CTRL+"},
        {ShortcutModifier::alt, "ALT+"},
        {ShortcutModifier::shift, "SHIFT+"},
        {ShortcutModifier::super, "LOGO+"},
    }};
    std::string trigger;
    for (const auto& [bit, text] : modifiers) {
        if (shortcut.modifiers & bit) trigger += text;
    }
    return trigger + name.data();
}

bool portalOffersGlobalShortcuts(const QDBusConnection& connection) {
    if (!connection.isConnected()) return false;
    QDBusMessage call = QDBusMessage::createMethodCall(
        service, desktopPath, QStringLiteral("org.freedesktop.DBus.Properties"), QStringLiteral("Get"));
    call << shortcutsInterface << QStringLiteral("version");
    const QDBusMessage reply = connection.call(call, QDBus::Block, versionTimeoutMs);
    if (reply.type() != QDBusMessage::ReplyMessage || reply.arguments().isEmpty()) return false;
    return reply.arguments().constFirst().value<QDBusVariant>().variant().toUInt() >= 1;
}

PortalGlobalShortcuts::PortalGlobalShortcuts(QDBusConnection connection, Describe describe)
    : m_connection(std::move(connection)),
      m_describe(describe ? std::move(describe) : Describe(presentableDescription)),
      m_context(std::make_unique<QObject>()) {
    qDBusRegisterMetaType<PortalShortcut>();
    qDBusRegisterMetaType<QList<PortalShortcut>>();
    new ActivationReceiver(
        m_connection, [this](const QString& session, const QString& id) { activated(session, id); },
        m_context.get());
}

PortalGlobalShortcuts::~PortalGlobalShortcuts() {
    closeSession();
}

bool PortalGlobalShortcuts::available() {
    // Once offered, kept: asking blocks, and the recorder asks each time it is shown.
    if (!m_offered) m_offered = portalOffersGlobalShortcuts(m_connection);
    return m_offered;
}

void PortalGlobalShortcuts::setPressedHandler(PressedHandler handler) {
    m_pressed = std::move(handler);
}

ShortcutRegistration PortalGlobalShortcuts::registerShortcut(const Shortcut& shortcut) {
    if (!portalTrigger(shortcut) || !available()) return ShortcutRegistration::failed;
    m_wanted.insert(shortcut);
    scheduleBind();
    return ShortcutRegistration::registered;
}

void PortalGlobalShortcuts::unregisterShortcut(const Shortcut& shortcut) {
    if (m_wanted.erase(shortcut) > 0) scheduleBind();
}

void PortalGlobalShortcuts::scheduleBind() {
    if (std::exchange(m_scheduled, true)) return;
    QMetaObject::invokeMethod(
        m_context.get(),
        [this] {
            m_scheduled = false;
            bindWanted();
        },
        Qt::QueuedConnection);
}

void PortalGlobalShortcuts::bindWanted() {
    if (m_waiting || m_sent == m_wanted) return;
    closeSession();
    m_sent = m_wanted;
    if (m_wanted.empty()) return;
    m_waiting = true;
    const QString sessionToken = token();
    m_session = desktopPath + QStringLiteral("/session/") + senderElement(m_connection) + QLatin1Char('/') +
                sessionToken;
    const QVariantMap options{{QStringLiteral("session_handle_token"), sessionToken}};
    request(QStringLiteral("CreateSession"), {}, options,
            [this, shortcuts = m_wanted](unsigned code, const QVariantMap& results) {
                if (code != responseSuccess) {
                    m_session.clear();
                    finished(shortcuts, code);
                    return;
                }
                // An object path, as documented, or a string, as some portals send it.
                const QVariant handle = results.value(QStringLiteral("session_handle"));
                const QString session = handle.metaType() == QMetaType::fromType<QDBusObjectPath>()
                                            ? handle.value<QDBusObjectPath>().path()
                                            : handle.toString();
                if (!session.isEmpty()) m_session = session;
                bind(shortcuts);
            });
}

void PortalGlobalShortcuts::bind(const std::set<Shortcut>& shortcuts) {
    QList<PortalShortcut> entries;
    for (const Shortcut& shortcut : shortcuts) {
        const QString trigger = triggerText(shortcut);
        entries.push_back({trigger,
                           {{QStringLiteral("description"), QString::fromStdString(m_describe(shortcut))},
                            {QStringLiteral("preferred_trigger"), trigger}}});
    }
    request(QStringLiteral("BindShortcuts"),
            {QVariant::fromValue(QDBusObjectPath(m_session)), QVariant::fromValue(entries), QString()}, {},
            [this, shortcuts](unsigned code, const QVariantMap&) { finished(shortcuts, code); });
}

void PortalGlobalShortcuts::finished(const std::set<Shortcut>& shortcuts, unsigned code) {
    m_waiting = false;
    if (code != responseSuccess) {
        const char* reason =
            code == responseCancelled ? "cancelled in the desktop's dialog" : "refused by the desktop";
        for (const Shortcut& shortcut : shortcuts)
            std::cout << "Error registering hotkey " << presentableDescription(shortcut) << ": " << reason
                      << std::endl;
    }
    bindWanted();
}

void PortalGlobalShortcuts::closeSession() {
    if (m_session.isEmpty()) return;
    m_connection.send(
        QDBusMessage::createMethodCall(service, m_session, sessionInterface, QStringLiteral("Close")));
    m_session.clear();
}

void PortalGlobalShortcuts::request(const QString& method, QVariantList arguments, QVariantMap options,
                                    Answer answered) {
    const QString handleToken = token();
    options.insert(QStringLiteral("handle_token"), handleToken);
    arguments.append(options);
    auto* receiver = new ResponseReceiver(m_connection, std::move(answered), m_context.get());
    // Watched before the call, so that a Response sent at once isn't missed.
    receiver->watch(desktopPath + QStringLiteral("/request/") + senderElement(m_connection) +
                    QLatin1Char('/') + handleToken);
    QDBusMessage call = QDBusMessage::createMethodCall(service, desktopPath, shortcutsInterface, method);
    call.setArguments(arguments);
    auto* watcher = new QDBusPendingCallWatcher(m_connection.asyncCall(call), receiver);
    QObject::connect(watcher, &QDBusPendingCallWatcher::finished, receiver,
                     [receiver](QDBusPendingCallWatcher* done) {
                         done->deleteLater();
                         if (done->isError()) receiver->answer(responseFailed, {});
                     });
}

void PortalGlobalShortcuts::activated(const QString& session, const QString& id) {
    if (session.isEmpty() || session != m_session || !m_pressed) return;
    for (const Shortcut& shortcut : m_wanted) {
        if (triggerText(shortcut) != id) continue;
        // A copy: the handler may register or unregister shortcuts.
        const Shortcut pressed = shortcut;
        m_pressed(pressed);
        return;
    }
}

} // namespace tovrin

#include "PortalGlobalShortcuts.moc"
