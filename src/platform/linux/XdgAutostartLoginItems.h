#pragma once

#include "services/LoginItems.h"

#include <filesystem>
#include <optional>

namespace tovrin {

// Launch at login as an XDG autostart entry, $XDG_CONFIG_HOME/autostart/tovrin.desktop. Only an
// entry carrying our marker key is ours: one of the same name that the user or another tool wrote
// is never reported enabled, overwritten or removed.
class XdgAutostartLoginItems final : public LoginItems {
public:
    // Starts this installation's command, <prefix>/bin/tovrin.
    XdgAutostartLoginItems();
    // Starts `executable` (an absolute path); nothing can be enabled without one.
    explicit XdgAutostartLoginItems(std::optional<std::filesystem::path> executable);

    bool isEnabled() const override;
    void setEnabled(bool enabled) override;

private:
    std::optional<std::filesystem::path> m_executable;
};

} // namespace tovrin
