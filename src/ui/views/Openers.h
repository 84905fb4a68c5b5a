#pragma once

#include <functional>

namespace tovrin {

// How a window that can't reach the application's windows directly, such as the floating chip,
// opens them: the application sets each action once its windows exist.
struct WindowOpener {
    std::function<void()> action;

    // Runs the action if one is set; tells whether it ran.
    bool open() const {
        if (!action) return false;
        action();
        return true;
    }
};

struct Openers {
    WindowOpener settings;
    WindowOpener about;
    WindowOpener feedback;
};

// The application's one set of openers.
Openers& openers();

} // namespace tovrin
