// The update feed's XML reader on arbitrary text, and the choice among whatever items it reads.
// A refusal always says why.
#include "platform/qt/QtAppcastReader.h"
#include "services/update/UpdateChoice.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string_view>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const tovrin::QtAppcastReader reader;
    const auto items = reader.read(std::string_view(reinterpret_cast<const char*>(data), size));
    if (!items) {
        if (items.error().empty()) std::abort();
        return 0;
    }
    (void)tovrin::newestApplicable(items.value(), "1.2", "1.3");
    return 0;
}
