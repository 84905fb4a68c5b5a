#include "platform/secrets/SecretStoreFactory.h"

#include "platform/secrets/FileSecretStore.h"
#include "platform/secrets/KeychainManager.h"

#include <cmath>
#include <gio/gio.h>

namespace tovrin {

std::string ChosenSecretStore::notice() const {
    if (!fallbackFile) return {};
    return "No Secret Service is running, so the Telegram token is kept in " + fallbackFile->string() +
           ", readable only by you.";
}

bool secretServiceAnswers(Seconds timeout) {
    GError* error = nullptr;
    gchar* address = g_dbus_address_get_for_bus_sync(G_BUS_TYPE_SESSION, nullptr, &error);
    if (!address) {
        g_clear_error(&error);
        return false;
    }
    GDBusConnection* connection = g_dbus_connection_new_for_address_sync(
        address,
        static_cast<GDBusConnectionFlags>(G_DBUS_CONNECTION_FLAGS_AUTHENTICATION_CLIENT |
                                          G_DBUS_CONNECTION_FLAGS_MESSAGE_BUS_CONNECTION),
        nullptr, nullptr, &error);
    g_free(address);
    if (!connection) {
        g_clear_error(&error);
        return false;
    }
    // Reading a property of the service needs the service itself to answer, not just the bus.
    GVariant* reply = g_dbus_connection_call_sync(
        connection, "org.freedesktop.secrets", "/org/freedesktop/secrets", "org.freedesktop.DBus.Properties",
        "Get", g_variant_new("(ss)", "org.freedesktop.Secret.Service", "Collections"), nullptr,
        G_DBUS_CALL_FLAGS_NONE, static_cast<int>(std::lround(timeout.count() * 1000)), nullptr, &error);
    const bool answered = reply != nullptr;
    if (reply) g_variant_unref(reply);
    g_clear_error(&error);
    g_dbus_connection_close_sync(connection, nullptr, nullptr);
    g_object_unref(connection);
    return answered;
}

ChosenSecretStore chooseSecretStore(const std::string& service, std::filesystem::path fallbackFile,
                                    Seconds probeTimeout) {
    if (secretServiceAnswers(probeTimeout)) return {std::make_unique<KeychainManager>(service), std::nullopt};
    if (fallbackFile.empty()) fallbackFile = FileSecretStore::defaultFile();
    return {std::make_unique<FileSecretStore>(fallbackFile), fallbackFile};
}

} // namespace tovrin
