#include "platform/secrets/KeychainManager.h"

#include <libsecret/secret.h>
#include <utility>

namespace tovrin {
namespace {

// Items match by their attributes alone, whatever schema name another version wrote.
const SecretSchema* schema() {
    static const SecretSchema* const instance =
        secret_schema_new("com.tovrin.app.Secret", SECRET_SCHEMA_DONT_MATCH_NAME, "service",
                          SECRET_SCHEMA_ATTRIBUTE_STRING, "account", SECRET_SCHEMA_ATTRIBUTE_STRING, nullptr);
    return instance;
}

} // namespace

KeychainManager::KeychainManager(std::string service) : m_service(std::move(service)) {}

std::optional<std::string> KeychainManager::string(const std::string& key) const {
    GError* error = nullptr;
    gchar* password = secret_password_lookup_sync(schema(), nullptr, &error, "service", m_service.c_str(),
                                                  "account", key.c_str(), nullptr);
    if (error) g_error_free(error);
    if (!password) return std::nullopt;
    std::string value(password);
    secret_password_free(password);
    return value;
}

void KeychainManager::set(const std::optional<std::string>& value, const std::string& key) {
    GError* error = nullptr;
    if (!value || value->empty()) {
        secret_password_clear_sync(schema(), nullptr, &error, "service", m_service.c_str(), "account",
                                   key.c_str(), nullptr);
    } else {
        // Storing under the same attributes replaces the item, so a key never has two.
        const std::string label = "Tovrin " + key;
        secret_password_store_sync(schema(), SECRET_COLLECTION_DEFAULT, label.c_str(), value->c_str(),
                                   nullptr, &error, "service", m_service.c_str(), "account", key.c_str(),
                                   nullptr);
    }
    if (error) g_error_free(error);
}

} // namespace tovrin
