#pragma once

#include "ui/viewmodels/HookSettingsViewModel.h"

#include <memory>

namespace tovrin {

// The hook settings of this installation for the user running it: the payload that came with it,
// the user's home, and the jq found there. Shared by `tovrin hooks` and the settings window.
std::unique_ptr<HookSettingsViewModel> makeInstalledHookSettings();

} // namespace tovrin
