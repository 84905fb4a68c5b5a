#pragma once

#include "ui/views/FloatingChipPinning.h"

#include <memory>
#include <optional>
#include <string>

namespace tovrin {

class XcbConnection;

// Keeps the floating chip on every workspace and above other windows through EWMH, on its own
// connection to the X server that shows the chip ($DISPLAY unless given). Without a server it does
// nothing. Main thread only.
class XcbChipPinner final : public FloatingChipPinning {
public:
    explicit XcbChipPinner(std::optional<std::string> display = std::nullopt);
    ~XcbChipPinner() override;
    XcbChipPinner(const XcbChipPinner&) = delete;
    XcbChipPinner& operator=(const XcbChipPinner&) = delete;

    void pin(std::uint64_t windowId) override;

private:
    std::unique_ptr<XcbConnection> m_connection;
};

} // namespace tovrin
