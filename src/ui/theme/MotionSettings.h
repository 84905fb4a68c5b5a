#pragma once

namespace tovrin {

// Whether the desktop asks for reduced motion. The desktop's setting is read once per run;
// TOVRIN_REDUCE_MOTION=1/0 overrides it and is looked at on every call.
bool reduceMotion();

} // namespace tovrin
