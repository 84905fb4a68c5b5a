#pragma once

#include "services/telemetry/DeviceFacts.h"

namespace tovrin {

// The screen and appearance as the toolkit sees them now, for the usage statistics.
DisplayFacts desktopDisplayFacts();

} // namespace tovrin
