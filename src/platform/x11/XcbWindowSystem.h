#pragma once

#include "focus/WindowSystem.h"

#include <memory>
#include <mutex>
#include <optional>
#include <string>

struct xcb_connection_t;

namespace tovrin {

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
    struct Atoms;
    // The live connection, connecting if needed; null without a server. Call under m_mutex.
    xcb_connection_t* connection() const;
    void disconnect() const;

    std::optional<std::string> m_display;
    mutable std::mutex m_mutex;
    mutable xcb_connection_t* m_connection = nullptr;
    mutable std::uint32_t m_root = 0;
    mutable std::unique_ptr<Atoms> m_atoms;
};

} // namespace tovrin
