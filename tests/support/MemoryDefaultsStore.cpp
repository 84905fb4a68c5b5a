#include "support/MemoryDefaultsStore.h"

namespace tovrin {

std::optional<nlohmann::json> MemoryDefaultsStore::object(const std::string& key) const {
    const auto it = m_values.find(key);
    if (it == m_values.end()) return std::nullopt;
    return it->second;
}

void MemoryDefaultsStore::set(const std::string& key, nlohmann::json value) {
    m_values[key] = std::move(value);
    ++m_writeCount;
}

void MemoryDefaultsStore::remove(const std::string& key) {
    m_values.erase(key);
    ++m_writeCount;
}

} // namespace tovrin
