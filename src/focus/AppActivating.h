#pragma once

#include <string>

namespace tovrin {

// Brings a running application forward by name, or starts it. Returns at once.
class AppActivating {
public:
    virtual ~AppActivating() = default;
    virtual void activate(const std::string& name) = 0;
};

} // namespace tovrin
