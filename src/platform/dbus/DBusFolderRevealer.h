#pragma once

#include "focus/FolderRevealing.h"
#include "focus/ShellRunner.h"

#include <QDBusConnection>

namespace tovrin {

// Asks the desktop's file manager (org.freedesktop.FileManager1.ShowItems) to show an item in its
// folder. Where no file manager answers on the session bus, opens the parent folder with xdg-open.
// Blocks for the D-Bus round trip, so it belongs on a worker thread.
class DBusFolderRevealer final : public FolderRevealing {
public:
    explicit DBusFolderRevealer(ShellRunner& shell,
                                QDBusConnection connection = QDBusConnection::sessionBus());

    void reveal(const std::string& path) override;

private:
    bool showItems(const std::string& path);

    ShellRunner& m_shell;
    QDBusConnection m_connection;
};

} // namespace tovrin
