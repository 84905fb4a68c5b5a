#pragma once

#include <functional>

namespace tovrin {

// Hands work to the telemetry client's worker, which runs it in order, one task at a time: a thread
// of the client's own in the application, the calling thread in tests. The queue, the building of
// signals and the bookkeeping of sends run there, never on the main loop.
using RunOnWorker = std::function<void(std::function<void()>)>;

} // namespace tovrin
