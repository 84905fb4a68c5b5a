#pragma once

#include "core/PreferencesStore.h"
#include "core/Result.h"

#include <string>
#include <string_view>

namespace tovrin {

// The remote hosts the user asked to watch, kept in the settings as ssh destinations.
class RemoteHostList {
public:
    explicit RemoteHostList(PreferencesStore& preferences);

    // Adds a destination as ssh takes it ("host", "user@host", an alias of ~/.ssh/config). Refuses
    // what ssh would read as an option or split, and a host already watched.
    Result<void> add(std::string_view destination);
    Result<void> remove(std::string_view destination);
    const std::vector<std::string>& all() const;

private:
    PreferencesStore& m_preferences;
};

} // namespace tovrin
