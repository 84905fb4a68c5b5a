#pragma once

namespace tovrin {

// The desktop's list of programs started at login, for this application only.
class LoginItems {
public:
    virtual ~LoginItems() = default;
    // Whether the application starts at login as things stand now.
    virtual bool isEnabled() const = 0;
    // Asks for the application to start at login, or not. Failures are not reported: callers
    // read isEnabled() afterwards.
    virtual void setEnabled(bool enabled) = 0;
};

} // namespace tovrin
