#pragma once

#include <string>

namespace tovrin {

// Desktop notifications. Each shown notification replaces the one shown before it.
class DesktopNotifier {
public:
    virtual ~DesktopNotifier() = default;
    // Whether a notification server answers; asked once per run by the caller.
    virtual bool requestAuthorization() = 0;
    // Title and body only; silent when no server answers.
    virtual void show(const std::string& title, const std::string& body) = 0;
};

} // namespace tovrin
