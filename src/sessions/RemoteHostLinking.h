#pragma once

#include "sessions/RemoteSnapshot.h"

#include <functional>
#include <string>

namespace tovrin {

// A live connection to one remote host's status folder, made again with back-off whenever it breaks.
// Main loop only.
class RemoteHostLinking {
public:
    enum class State { connecting, connected, unreachable };

    virtual ~RemoteHostLinking() = default;

    // Connects now; `onChange` is called on the main loop after each new snapshot or state.
    virtual void start(std::function<void()> onChange) = 0;
    virtual State state() const = 0;
    // Why the host is unreachable, in the words of ssh or of the stream; empty otherwise.
    virtual std::string problem() const = 0;
    // The last complete snapshot; kept while the host is unreachable, so that its sessions leave
    // the list by their age, not all at once.
    virtual const RemoteSnapshot& snapshot() const = 0;
};

} // namespace tovrin
