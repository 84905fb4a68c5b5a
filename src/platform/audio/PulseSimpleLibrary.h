#pragma once

#include <pulse/simple.h>

namespace tovrin {

// The PulseAudio simple API, loaded at the first sound rather than at start.
struct PulseSimpleLibrary {
    decltype(&::pa_simple_new) newStream = nullptr;
    decltype(&::pa_simple_write) write = nullptr;
    decltype(&::pa_simple_drain) drain = nullptr;
    decltype(&::pa_simple_flush) flush = nullptr;
    decltype(&::pa_simple_free) free = nullptr;

    // Loads it on the first call; nothing when the library isn't installed.
    static const PulseSimpleLibrary* get();
};

} // namespace tovrin
