#include "platform/audio/PulseSimpleLibrary.h"

#include "platform/linux/SharedLibrary.h"

#include <optional>

namespace tovrin {
namespace {

std::optional<PulseSimpleLibrary> load() {
    const auto library = SharedLibrary::load("libpulse-simple.so.0");
    if (!library) return std::nullopt;
    PulseSimpleLibrary api;
    const bool complete =
        library->resolve("pa_simple_new", api.newStream) && library->resolve("pa_simple_write", api.write) &&
        library->resolve("pa_simple_drain", api.drain) && library->resolve("pa_simple_flush", api.flush) &&
        library->resolve("pa_simple_free", api.free);
    if (!complete) return std::nullopt;
    return api;
}

} // namespace

const PulseSimpleLibrary* PulseSimpleLibrary::get() {
    static const std::optional<PulseSimpleLibrary> api = load();
    return api ? &*api : nullptr;
}

} // namespace tovrin
