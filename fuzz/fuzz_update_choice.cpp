// The choice among the feed's releases, on items and versions made from arbitrary bytes. The
// answer is an installable item above the running build and the skipped version, and no other
// such item is newer.
#include "services/update/UpdateChoice.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <fuzzer/FuzzedDataProvider.h>
#include <string>
#include <vector>

using tovrin::AppcastItem;
using tovrin::isNewerVersion;

namespace {

// Short texts of digits and dots mostly, so that many of them read as versions.
std::string versionText(FuzzedDataProvider& input) {
    std::string text = input.ConsumeRandomLengthString(24);
    if (input.ConsumeBool()) {
        for (char& c : text)
            c = "0123456789."[static_cast<unsigned char>(c) % 11];
    }
    return text;
}

// Appending a part always makes a version newer, and never makes a non-version one.
bool readsAsVersion(const std::string& text) {
    return isNewerVersion(text + ".1", text);
}

bool applicable(const AppcastItem& item, const std::string& current, const std::string& skipped) {
    return !item.url.empty() && item.length && !item.signature.empty() &&
           isNewerVersion(item.version, current) &&
           (!readsAsVersion(skipped) || isNewerVersion(item.version, skipped));
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    FuzzedDataProvider input(data, size);
    const std::string current = versionText(input);
    const std::string skipped = versionText(input);
    std::vector<AppcastItem> items(input.ConsumeIntegralInRange<std::size_t>(0, 8));
    for (AppcastItem& item : items) {
        item.version = versionText(input);
        if (input.ConsumeBool()) item.url = "https://tovrin.app/r";
        if (input.ConsumeBool()) item.length = input.ConsumeIntegral<std::uint64_t>();
        if (input.ConsumeBool()) item.signature = "c2ln";
    }

    // An order: never newer than itself, never both ways.
    if (isNewerVersion(current, current)) std::abort();
    if (isNewerVersion(current, skipped) && isNewerVersion(skipped, current)) std::abort();

    const auto chosen = tovrin::newestApplicable(items, current, skipped);
    if (chosen && !applicable(*chosen, current, skipped)) std::abort();
    for (const AppcastItem& item : items) {
        if (applicable(item, current, skipped) && (!chosen || isNewerVersion(item.version, chosen->version)))
            std::abort();
    }
    return 0;
}
