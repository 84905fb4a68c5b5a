#pragma once

#include "focus/WindowSystem.h"

#include <memory>
#include <mutex>
#include <optional>
#include <string>

namespace tovrin {

class XcbConnection;

// The desktop's windows through EWMH on an X server. Connects on first use to $DISPLAY (or
// the display given) and again after the connection has broken; without a server every
// call answers "none". Safe to use from any thread.
class XcbWindowSystem final : public WindowSystem {
public:
    explicit XcbWindowSystem(std::optional<std::string> display = std::nullopt);
    ~XcbWindowSystem() override;
    XcbWindowSystem(const XcbWindowSystem&) = delete;
    XcbWindowSystem& operator=(const XcbWindowSystem&) = delete;

    bool available() const override;
    std::vector<WindowInfo> normalWindows() const override;
    bool activate(std::uint64_t windowId) override;

private:
    mutable std::mutex m_mutex;
    // Used only under m_mutex.
    const std::unique_ptr<XcbConnection> m_connection;
};

} // namespace tovrin
