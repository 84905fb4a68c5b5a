#include "app/InstalledHooks.h"

#include "core/UserPaths.h"
#include "platform/linux/InstallationPaths.h"

namespace tovrin {

std::unique_ptr<HookSettingsViewModel> makeInstalledHookSettings() {
    const auto home = UserPaths::home();
    return std::make_unique<HookSettingsViewModel>(
        AdapterResources::locate(InstallationPaths::shareDir(), AdapterResources::processEnvironment()), home,
        JQLocator(home));
}

} // namespace tovrin
