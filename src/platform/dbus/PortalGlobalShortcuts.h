#pragma once

#include "services/hotkey/GlobalShortcuts.h"

#include <QDBusConnection>
#include <QObject>
#include <QString>
#include <QVariantList>
#include <QVariantMap>
#include <functional>
#include <memory>
#include <optional>
#include <set>
#include <string>

namespace tovrin {

// The shortcut as the portal names triggers, "CTRL+ALT+e": modifiers,
// then the key's keysym name. None for a value that is no keysym.
std::optional<std::string> portalTrigger(const Shortcut& shortcut);

// Whether the desktop portal on `connection` offers global shortcuts; blocks for at most a moment.
bool portalOffersGlobalShortcuts(const QDBusConnection& connection);

// Global shortcuts through the desktop portal's GlobalShortcuts interface: on Wayland only the
// compositor sees every application's keys. All shortcuts are bound in one portal session, which the
// user confirms once in the compositor's dialog. A session takes a single bind, so any change of the
// set closes it and binds the whole new set in a fresh one. Changes go out on the next turn of the
// event loop, so that a shortcut registered and at once unregistered (a probe) never reaches the
// compositor. The compositor answers later: a refused bind is told as one line on standard output,
// and its shortcuts never fire. Main thread only, with a QCoreApplication.
class PortalGlobalShortcuts final : public GlobalShortcuts {
public:
    // What the compositor's dialog lists the shortcut as.
    using Describe = std::function<std::string(const Shortcut&)>;

    explicit PortalGlobalShortcuts(QDBusConnection connection = QDBusConnection::sessionBus(),
                                   Describe describe = {});
    ~PortalGlobalShortcuts() override;
    PortalGlobalShortcuts(const PortalGlobalShortcuts&) = delete;
    PortalGlobalShortcuts& operator=(const PortalGlobalShortcuts&) = delete;

    ShortcutRegistration registerShortcut(const Shortcut& shortcut) override;
    void unregisterShortcut(const Shortcut& shortcut) override;
    void setPressedHandler(PressedHandler handler) override;
    bool available() override;
    bool throughPortal() const override { return true; }

private:
    using Answer = std::function<void(unsigned code, const QVariantMap& results)>;

    void scheduleBind();
    void bindWanted();
    void bind(const std::set<Shortcut>& shortcuts);
    void finished(const std::set<Shortcut>& shortcuts, unsigned code);
    void closeSession();
    // Calls a portal method whose last argument is its options, and `answered` with the code and
    // results of the Response that its request object sends.
    void request(const QString& method, QVariantList arguments, QVariantMap options, Answer answered);
    QString nextToken();
    void activated(const QString& session, const QString& id);

    QDBusConnection m_connection;
    Describe m_describe;
    bool m_offered = false;
    std::set<Shortcut> m_wanted;
    // What the current session was created for, bound or refused; none before the first bind.
    std::optional<std::set<Shortcut>> m_sent;
    QString m_session;
    // A session or bind waits for the portal's answer; changes wait for it in turn.
    bool m_waiting = false;
    bool m_scheduled = false;
    unsigned m_tokens = 0;
    PressedHandler m_pressed;
    // Last, so that the signal receivers and timers it owns go before anything they use.
    std::unique_ptr<QObject> m_context;
};

} // namespace tovrin
