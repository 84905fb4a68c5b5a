#include "platform/GlobalShortcutsFactory.h"

#include "platform/x11/XcbGlobalShortcuts.h"
#include "services/hotkey/ShortcutReach.h"

#include <utility>

namespace tovrin {

std::unique_ptr<GlobalShortcuts> makeGlobalShortcuts(PortalGlobalShortcuts::Describe describe) {
    QDBusConnection bus = QDBusConnection::sessionBus();
    if (isWaylandSession() && portalOffersGlobalShortcuts(bus))
        return std::make_unique<PortalGlobalShortcuts>(bus, std::move(describe));
    return std::make_unique<XcbGlobalShortcuts>();
}

} // namespace tovrin
