#pragma once

#include "alerts/telegram/SecretStoring.h"

#include <string>

namespace tovrin {

// Secrets in the desktop's Secret Service (GNOME Keyring, KWallet), through libsecret: one item per
// key in the default collection, told apart by the attributes `service` and `account`. Calls are
// synchronous on the calling thread; failures read as absent and leave stored values alone.
class KeychainManager final : public SecretStoring {
public:
    static constexpr const char* defaultService = "com.tovrin.app";

    explicit KeychainManager(std::string service = defaultService);

    std::optional<std::string> string(const std::string& key) const override;
    void set(const std::optional<std::string>& value, const std::string& key) override;

    const std::string& service() const { return m_service; }

private:
    std::string m_service;
};

} // namespace tovrin
