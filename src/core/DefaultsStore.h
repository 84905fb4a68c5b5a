#pragma once

#include <nlohmann/json.hpp>
#include <optional>
#include <string>

namespace tovrin {

// The per-user typed key-value store. Values keep their JSON type, so that a reader can tell
// a stored integer from a string or a boolean.
class DefaultsStore {
public:
    virtual ~DefaultsStore() = default;
    virtual std::optional<nlohmann::json> object(const std::string& key) const = 0;
    virtual void set(const std::string& key, nlohmann::json value) = 0;
    virtual void remove(const std::string& key) = 0;
};

} // namespace tovrin
