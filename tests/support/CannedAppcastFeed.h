#pragma once

#include "services/update/AppcastReading.h"

#include <string>
#include <string_view>
#include <vector>

namespace tovrin::test {

// Reads the body "feed" as the items set here; any other text fails as a malformed document would.
struct CannedAppcastFeed final : AppcastReading {
    std::vector<AppcastItem> items;
    Result<std::vector<AppcastItem>, std::string> read(std::string_view feed) const override {
        if (feed != "feed")
            return Result<std::vector<AppcastItem>, std::string>::failure("line 1, column 1: no");
        return items;
    }
};

} // namespace tovrin::test
