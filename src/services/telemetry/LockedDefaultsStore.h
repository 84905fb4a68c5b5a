#pragma once

#include "core/DefaultsStore.h"

#include <memory>
#include <mutex>

namespace tovrin {

// A store that several threads may use: the telemetry client reads its own store on the main loop
// and writes it from its worker, so that no disk write holds up the main loop.
class LockedDefaultsStore final : public DefaultsStore {
public:
    explicit LockedDefaultsStore(std::unique_ptr<DefaultsStore> store) : m_store(std::move(store)) {}

    std::optional<nlohmann::json> object(const std::string& key) const override {
        const std::lock_guard lock(m_mutex);
        return m_store->object(key);
    }
    void set(const std::string& key, nlohmann::json value) override {
        const std::lock_guard lock(m_mutex);
        m_store->set(key, std::move(value));
    }
    void remove(const std::string& key) override {
        const std::lock_guard lock(m_mutex);
        m_store->remove(key);
    }

private:
    mutable std::mutex m_mutex;
    std::unique_ptr<DefaultsStore> m_store;
};

} // namespace tovrin
