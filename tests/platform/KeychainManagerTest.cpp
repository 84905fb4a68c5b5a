#include "platform/secrets/KeychainManager.h"

#include "platform/secrets/SecretStoreFactory.h"

#include <cstdlib>
#include <gio/gio.h>
#include <gtest/gtest.h>

namespace tovrin {
namespace {

const std::string token = TelegramSecretKeys::botToken;
const std::string chat = TelegramSecretKeys::chatID;

// How many items the keyring holds for one service and key, whatever their schema, asked of the
// service itself.
int itemsFor(const std::string& service, const std::string& key) {
    GDBusConnection* bus = g_bus_get_sync(G_BUS_TYPE_SESSION, nullptr, nullptr);
    if (!bus) return -1;
    GVariantBuilder attributes;
    g_variant_builder_init(&attributes, G_VARIANT_TYPE("a{ss}"));
    g_variant_builder_add(&attributes, "{ss}", "service", service.c_str());
    g_variant_builder_add(&attributes, "{ss}", "account", key.c_str());
    GVariant* reply = g_dbus_connection_call_sync(
        bus, "org.freedesktop.secrets", "/org/freedesktop/secrets", "org.freedesktop.Secret.Service",
        "SearchItems", g_variant_new("(a{ss})", &attributes), G_VARIANT_TYPE("(aoao)"),
        G_DBUS_CALL_FLAGS_NONE, 5000, nullptr, nullptr);
    g_object_unref(bus);
    if (!reply) return -1;
    GVariant* unlocked = g_variant_get_child_value(reply, 0);
    GVariant* locked = g_variant_get_child_value(reply, 1);
    const auto count = g_variant_n_children(unlocked) + g_variant_n_children(locked);
    g_variant_unref(unlocked);
    g_variant_unref(locked);
    g_variant_unref(reply);
    return static_cast<int>(count);
}

// Runs only under with-secret-service.sh, which starts a keyring of its own: never against the
// user's real keyring.
class KeychainManagerTest : public ::testing::Test {
protected:
    void SetUp() override {
        if (!std::getenv("TOVRIN_SECRET_SERVICE_TESTS"))
            GTEST_SKIP() << "needs the private keyring of tests/platform/with-secret-service.sh";
    }
    KeychainManager store{"com.tovrin.test"};
};

TEST_F(KeychainManagerTest, TheServiceAnswersAndIsChosen) {
    EXPECT_TRUE(secretServiceAnswers(Seconds(5)));
    const auto chosen = chooseSecretStore("com.tovrin.test");
    EXPECT_FALSE(chosen.usesFallback());
    EXPECT_EQ(chosen.notice(), "");
    ASSERT_TRUE(dynamic_cast<KeychainManager*>(chosen.store.get()));
}

TEST_F(KeychainManagerTest, SetTwiceLeavesOneItemWithTheSecondValue) {
    EXPECT_FALSE(store.string(token));
    store.set("123:ABC", token);
    store.set("456:DEF", token);
    EXPECT_EQ(store.string(token), "456:DEF");
    EXPECT_EQ(itemsFor("com.tovrin.test", token), 1);
    EXPECT_EQ(KeychainManager("com.tovrin.test").string(token), "456:DEF");
}

TEST_F(KeychainManagerTest, AnEmptyValueRemovesTheItem) {
    store.set("-1001", chat);
    store.set("", chat);
    EXPECT_FALSE(store.string(chat));
    EXPECT_EQ(itemsFor("com.tovrin.test", chat), 0);
    store.set("-1001", chat);
    store.set(std::nullopt, chat);
    EXPECT_FALSE(store.string(chat));
}

TEST_F(KeychainManagerTest, ServicesAndKeysKeepTheirItemsApart) {
    KeychainManager other("com.tovrin.other");
    store.set("mine", token);
    other.set("theirs", token);
    store.set("-1", chat);
    EXPECT_EQ(store.string(token), "mine");
    EXPECT_EQ(other.string(token), "theirs");
    EXPECT_FALSE(other.string(chat));
    other.set("", token);
    EXPECT_EQ(store.string(token), "mine");
}

} // namespace
} // namespace tovrin
