#pragma once

#include "core/HttpClient.h"

#include <string>

namespace tovrin {

// What a batch's answer means for the batch: sent, to be sent again, or refused for good (with the
// words the log gives the refusal).
struct ResponseDisposition {
    enum class Kind { success, retry, drop };
    Kind kind = Kind::retry;
    std::string reason; // for `drop`

    static ResponseDisposition of(const HttpResult& result);
};

} // namespace tovrin
