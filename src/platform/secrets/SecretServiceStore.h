#pragma once

#include "alerts/telegram/SecretStoring.h"
#include "platform/secrets/SecretServiceClient.h"

#include <chrono>
#include <string>

namespace tovrin {

// Secrets in the desktop's Secret Service (GNOME Keyring, KWallet): one item per key in the default
// collection, told apart by the attributes `service` and `account`. Calls are synchronous on the
// calling thread; failures read as absent and leave stored values alone.
class SecretServiceStore final : public SecretStoring {
public:
    static constexpr const char* defaultService = "com.tovrin.app";

    // A locked keyring asks the user for its password; after `promptTimeout` without an answer
    // the prompt is withdrawn and the call fails.
    explicit SecretServiceStore(std::string service = defaultService,
                                std::chrono::milliseconds promptTimeout = std::chrono::minutes(2));

    std::optional<std::string> string(const std::string& key) const override;
    void set(const std::optional<std::string>& value, const std::string& key) override;

    const std::string& service() const { return m_service; }

private:
    SecretServiceClient::Attributes attributes(const std::string& key) const;

    std::string m_service;
    SecretServiceClient m_client;
};

} // namespace tovrin
