#pragma once

#include "core/DefaultsStore.h"

#include <map>

namespace tovrin {

// The in-memory twin of the defaults file; counts writes so that callers can tell whether
// anything was persisted.
class MemoryDefaultsStore final : public DefaultsStore {
public:
    MemoryDefaultsStore() = default;
    explicit MemoryDefaultsStore(std::map<std::string, nlohmann::json> initial)
        : m_values(std::move(initial)) {}

    std::optional<nlohmann::json> object(const std::string& key) const override;
    void set(const std::string& key, nlohmann::json value) override;
    void remove(const std::string& key) override;

    std::size_t writeCount() const { return m_writeCount; }

private:
    std::map<std::string, nlohmann::json> m_values;
    std::size_t m_writeCount = 0;
};

} // namespace tovrin
