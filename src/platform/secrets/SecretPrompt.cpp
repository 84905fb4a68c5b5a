#include "platform/secrets/SecretPrompt.h"

#include <QCoreApplication>
#include <QDBusMessage>
#include <QDBusVariant>
#include <QEventLoop>
#include <QThread>
#include <QTimer>
#include <memory>

namespace tovrin {
namespace {

// Receives the prompt's Completed signal, which Qt DBus delivers only to a slot.
class SecretPromptWaiter final : public QObject {
    Q_OBJECT
public:
    bool finished = false;
    bool dismissed = true;

signals:
    void done();

public slots:
    void completed(bool wasDismissed, const QDBusVariant&) {
        finished = true;
        dismissed = wasDismissed;
        emit done();
    }
};

} // namespace

bool completeSecretPrompt(const QDBusConnection& connection, const QDBusObjectPath& prompt,
                          std::chrono::milliseconds timeout) {
    if (!QCoreApplication::instance()) return false;
    const QString service = QStringLiteral("org.freedesktop.secrets");
    const QString interface = QStringLiteral("org.freedesktop.Secret.Prompt");
    bool accepted = false;
    std::unique_ptr<QThread> thread(QThread::create([&] {
        SecretPromptWaiter waiter;
        QDBusConnection bus = connection;
        // Subscribed before asking, so that an answer that comes at once isn't missed.
        if (!bus.connect(service, prompt.path(), interface, QStringLiteral("Completed"), &waiter,
                         SLOT(completed(bool, QDBusVariant))))
            return;
        QEventLoop loop;
        QObject::connect(&waiter, &SecretPromptWaiter::done, &loop, &QEventLoop::quit);
        QTimer::singleShot(timeout, &loop, &QEventLoop::quit);
        QDBusMessage call =
            QDBusMessage::createMethodCall(service, prompt.path(), interface, QStringLiteral("Prompt"));
        call << QString(); // no parent window to attach the dialog to
        if (bus.call(call, QDBus::Block).type() == QDBusMessage::ReplyMessage) loop.exec();
        if (!waiter.finished) {
            QDBusMessage dismiss =
                QDBusMessage::createMethodCall(service, prompt.path(), interface, QStringLiteral("Dismiss"));
            bus.call(dismiss, QDBus::NoBlock);
        }
        bus.disconnect(service, prompt.path(), interface, QStringLiteral("Completed"), &waiter,
                       SLOT(completed(bool, QDBusVariant)));
        accepted = waiter.finished && !waiter.dismissed;
    }));
    thread->start();
    thread->wait();
    return accepted;
}

} // namespace tovrin

#include "SecretPrompt.moc"
