#pragma once

#include "core/Result.h"
#include "services/update/AppcastItem.h"

#include <string>
#include <string_view>
#include <vector>

namespace tovrin {

// Reads the items of an update feed (an RSS channel whose items carry the release fields).
class AppcastReading {
public:
    virtual ~AppcastReading() = default;
    // Every item in feed order; a text that isn't a well-formed RSS document fails with words
    // that say where and why.
    virtual Result<std::vector<AppcastItem>, std::string> read(std::string_view feed) const = 0;
};

} // namespace tovrin
