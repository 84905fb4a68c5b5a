#include "platform/dbus/DBusFolderRevealer.h"

#include <QDBusMessage>
#include <QString>
#include <QStringList>
#include <QUrl>
#include <filesystem>
#include <utility>

namespace tovrin {
namespace {

const QString service = QStringLiteral("org.freedesktop.FileManager1");
const QString objectPath = QStringLiteral("/org/freedesktop/FileManager1");
const QString interface = QStringLiteral("org.freedesktop.FileManager1");
// Long enough for the bus to start a file manager that it can activate.
constexpr int showItemsTimeoutMs = 5000;

} // namespace

DBusFolderRevealer::DBusFolderRevealer(ShellRunner& shell, QDBusConnection connection)
    : m_shell(shell), m_connection(std::move(connection)) {}

void DBusFolderRevealer::reveal(const std::string& path) {
    if (path.empty()) return;
    const std::filesystem::path given(path);
    // "/a/proj/" names the folder proj, to be shown in "/a" as "/a/proj" would be.
    const std::filesystem::path item = given.has_filename() ? given : given.parent_path();
    if (showItems(item.string())) return;
    const std::filesystem::path parent = item.has_parent_path() ? item.parent_path() : item;
    m_shell.run("xdg-open", {parent.string()});
}

bool DBusFolderRevealer::showItems(const std::string& path) {
    if (!m_connection.isConnected()) return false;
    QDBusMessage call =
        QDBusMessage::createMethodCall(service, objectPath, interface, QStringLiteral("ShowItems"));
    const QString uri = QUrl::fromLocalFile(QString::fromStdString(path)).toString(QUrl::FullyEncoded);
    call << QStringList{uri} << QString();
    const QDBusMessage reply = m_connection.call(call, QDBus::Block, showItemsTimeoutMs);
    return reply.type() == QDBusMessage::ReplyMessage;
}

} // namespace tovrin
