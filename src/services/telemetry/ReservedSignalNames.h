#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace tovrin {

// Names and parameter keys that the service keeps for itself. A signal that uses one still goes out;
// the warning tells the developer why the dashboard will look odd. Compared in lower case.
struct ReservedSignalNames {
    static std::optional<std::string> nameWarning(std::string_view name);
    static std::optional<std::string> keyWarning(std::string_view key);
};

} // namespace tovrin
