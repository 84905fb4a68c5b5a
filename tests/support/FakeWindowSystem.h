#pragma once

#include "focus/WindowSystem.h"

#include <vector>

namespace tovrin::test {

// A desktop of windows the test lays out; remembers what was activated.
class FakeWindowSystem final : public WindowSystem {
public:
    bool isAvailable = true;
    std::vector<WindowInfo> windows;
    std::vector<std::uint64_t> activated;

    bool available() const override { return isAvailable; }
    std::vector<WindowInfo> normalWindows() const override {
        return isAvailable ? windows : std::vector<WindowInfo>{};
    }
    bool activate(std::uint64_t windowId) override {
        activated.push_back(windowId);
        return isAvailable;
    }
};

} // namespace tovrin::test
