#pragma once

#include "services/update/AppcastReading.h"

namespace tovrin::test {

// Reads the text "feed" as `items`; any other text is no feed at all.
class CannedAppcast final : public AppcastReading {
public:
    Result<std::vector<AppcastItem>, std::string> read(std::string_view feed) const override {
        if (feed != "feed")
            return Result<std::vector<AppcastItem>, std::string>::failure("line 1, column 1: no");
        return items;
    }
    std::vector<AppcastItem> items;
};

} // namespace tovrin::test
