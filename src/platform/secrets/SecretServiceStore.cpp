#include "platform/secrets/SecretServiceStore.h"

#include <utility>

namespace tovrin {
namespace {

// Written with every item, as earlier versions did, so that other keyring tools can group them;
// lookups leave it out and find items of any schema name.
const QString schemaAttribute = QStringLiteral("xdg:schema");
const QString schemaName = QStringLiteral("com.tovrin.app.Secret");

} // namespace

SecretServiceStore::SecretServiceStore(std::string service, std::chrono::milliseconds promptTimeout)
    : m_service(std::move(service)), m_client(QDBusConnection::sessionBus(), promptTimeout) {}

SecretServiceClient::Attributes SecretServiceStore::attributes(const std::string& key) const {
    return {{QStringLiteral("service"), QString::fromStdString(m_service)},
            {QStringLiteral("account"), QString::fromStdString(key)}};
}

std::optional<std::string> SecretServiceStore::string(const std::string& key) const {
    for (const auto& item : m_client.search(attributes(key))) {
        const auto secret = m_client.secret(item);
        if (secret && !secret->isEmpty()) return secret->toStdString();
    }
    return std::nullopt;
}

void SecretServiceStore::set(const std::optional<std::string>& value, const std::string& key) {
    const auto matching = attributes(key);
    std::optional<QDBusObjectPath> kept;
    if (value && !value->empty()) {
        auto stored = matching;
        stored.insert(schemaAttribute, schemaName);
        const QString label = QStringLiteral("Tovrin ") + QString::fromStdString(key);
        kept = m_client.store(label, stored, QByteArray::fromStdString(*value), QStringLiteral("text/plain"));
        if (!kept) return; // the old value stays rather than none at all
    }
    // Replacing only covers an item with the very same attributes; one with another schema name,
    // or in another collection, would otherwise shadow the new value.
    for (const auto& item : m_client.search(matching)) {
        if (item != kept) m_client.remove(item);
    }
}

} // namespace tovrin
