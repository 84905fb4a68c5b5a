// The strict reader of other programs' configuration files. What it accepts must print and read
// back as the same document (we write back value for value), and a text quoted for a message
// holds no raw control byte.
#include "hooks/ForeignJson.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>

namespace fj = tovrin::ForeignJson;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string text(reinterpret_cast<const char*>(data), size);
    for (const unsigned char c : fj::quoted(text)) {
        if (c < 0x20) std::abort();
    }
    const auto document = fj::read(text);
    if (!document) return 0;
    const auto printed = fj::pretty(document.value());
    if (!printed) std::abort();
    const auto again = fj::read(printed.value());
    if (!again || again.value() != document.value()) std::abort();
    return 0;
}
