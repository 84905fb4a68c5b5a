#pragma once

#include <string>

namespace tovrin {

// Desktop notifications. Each shown notification replaces the one shown before it.
class DesktopNotifier {
public:
    virtual ~DesktopNotifier() = default;
    // Asks the notification server what it can show (body markup); once per run. The desktop has no
    // permission to ask for: a missing server just leaves later notifications unshown.
    virtual void learnCapabilities() = 0;
    // Title and body only; silent when no server answers.
    virtual void show(const std::string& title, const std::string& body) = 0;
};

} // namespace tovrin
