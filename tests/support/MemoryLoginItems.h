#pragma once

#include "services/LoginItems.h"

namespace tovrin::test {

// The desktop's login list, kept in memory; it can be told to refuse, as a failed write would.
class MemoryLoginItems final : public LoginItems {
public:
    bool isEnabled() const override { return enabled; }
    void setEnabled(bool on) override {
        if (!refuses) enabled = on;
    }
    bool enabled = false;
    bool refuses = false;
};

} // namespace tovrin::test
