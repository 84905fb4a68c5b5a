#include "platform/secrets/SecretServiceStore.h"

#include "platform/secrets/SecretStoreFactory.h"
#include "support/QtEventLoopTest.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusMetaType>
#include <QDBusObjectPath>
#include <QDBusVariant>
#include <chrono>
#include <cstdlib>
#include <gtest/gtest.h>

namespace tovrin {
namespace {

const std::string token = TelegramSecretKeys::botToken;
const std::string chat = TelegramSecretKeys::chatID;

QDBusMessage callSecretService(const QString& path, const QString& interface, const QString& method,
                               const QList<QVariant>& arguments) {
    QDBusMessage call =
        QDBusMessage::createMethodCall(QStringLiteral("org.freedesktop.secrets"), path, interface, method);
    call.setArguments(arguments);
    return QDBusConnection::sessionBus().call(call, QDBus::Block, 5000);
}

// The items the keyring holds for one service and key, whatever their schema, asked of the service
// itself; locked ones included.
QList<QDBusObjectPath> itemPaths(const std::string& service, const std::string& key) {
    const QMap<QString, QString> attributes{{"service", QString::fromStdString(service)},
                                            {"account", QString::fromStdString(key)}};
    const QDBusMessage reply = callSecretService("/org/freedesktop/secrets", "org.freedesktop.Secret.Service",
                                                 "SearchItems", {QVariant::fromValue(attributes)});
    if (reply.type() != QDBusMessage::ReplyMessage) return {};
    return qdbus_cast<QList<QDBusObjectPath>>(reply.arguments().at(0)) +
           qdbus_cast<QList<QDBusObjectPath>>(reply.arguments().at(1));
}

int itemsFor(const std::string& service, const std::string& key) {
    return static_cast<int>(itemPaths(service, key).size());
}

QVariant itemProperty(const QDBusObjectPath& item, const QString& name) {
    const QDBusMessage reply = callSecretService(item.path(), "org.freedesktop.DBus.Properties", "Get",
                                                 {"org.freedesktop.Secret.Item", name});
    if (reply.type() != QDBusMessage::ReplyMessage) return {};
    return qdbus_cast<QDBusVariant>(reply.arguments().at(0)).variant();
}

QDBusObjectPath defaultCollection() {
    const QDBusMessage reply = callSecretService("/org/freedesktop/secrets", "org.freedesktop.Secret.Service",
                                                 "ReadAlias", {"default"});
    return qdbus_cast<QDBusObjectPath>(reply.arguments().value(0));
}

// Runs only under with-secret-service.sh, which starts a keyring of its own: never against the
// user's real keyring.
class SecretServiceStoreTest : public test::QtEventLoopTest {
protected:
    void SetUp() override {
        if (!std::getenv("TOVRIN_SECRET_SERVICE_TESTS"))
            GTEST_SKIP() << "needs the private keyring of tests/platform/with-secret-service.sh";
        qDBusRegisterMetaType<QMap<QString, QString>>();
    }
    SecretServiceStore store{"com.tovrin.test"};
};

TEST_F(SecretServiceStoreTest, TheServiceAnswersAndIsChosen) {
    EXPECT_TRUE(secretServiceAnswers(Seconds(5)));
    const auto chosen = chooseSecretStore("com.tovrin.test");
    EXPECT_FALSE(chosen.usesFallback());
    EXPECT_EQ(chosen.notice(), "");
    ASSERT_TRUE(dynamic_cast<SecretServiceStore*>(chosen.store.get()));
}

TEST_F(SecretServiceStoreTest, KeepsOneItemPerServiceAndKeyAndAnEmptyValueRemovesIt) {
    const std::string value = "ключ-🔑-\t\"x\"";
    SecretServiceStore other("com.tovrin.other");
    EXPECT_FALSE(store.string(token));
    store.set("123:ABC", token);
    store.set(value, token);
    other.set("theirs", token);
    store.set("-1001", chat);
    EXPECT_EQ(SecretServiceStore("com.tovrin.test").string(token), value);
    EXPECT_EQ(itemsFor("com.tovrin.test", token), 1);
    EXPECT_EQ(other.string(token), "theirs");
    EXPECT_FALSE(other.string(chat));
    other.set("", token);
    EXPECT_EQ(store.string(token), value);

    store.set("", chat);
    EXPECT_FALSE(store.string(chat));
    EXPECT_EQ(itemsFor("com.tovrin.test", chat), 0);
    store.set("-1001", chat);
    store.set(std::nullopt, chat);
    EXPECT_FALSE(store.string(chat));
}

TEST_F(SecretServiceStoreTest, ItemsCarryTheAttributesAndLabelThatEarlierVersionsWrote) {
    store.set("123:ABC", token);
    const auto items = itemPaths("com.tovrin.test", token);
    ASSERT_EQ(items.size(), 1);
    const auto attributes = qdbus_cast<QMap<QString, QString>>(itemProperty(items[0], "Attributes"));
    const QMap<QString, QString> expected{{"service", "com.tovrin.test"},
                                          {"account", QString::fromStdString(token)},
                                          {"xdg:schema", "com.tovrin.app.Secret"}};
    EXPECT_EQ(attributes, expected);
    EXPECT_EQ(itemProperty(items[0], "Label").toString(), "Tovrin " + QString::fromStdString(token));
    EXPECT_TRUE(items[0].path().startsWith(defaultCollection().path() + "/"))
        << items[0].path().toStdString();
}

// Items another program (or another schema name) wrote under the same service and key are found,
// and a new value leaves exactly one item behind.
TEST_F(SecretServiceStoreTest, FindsAndReplacesItemsWrittenUnderAnotherSchemaName) {
    store.set(std::nullopt, token);
    SecretServiceClient client;
    const auto written = client.store("Written elsewhere",
                                      {{"service", "com.tovrin.test"},
                                       {"account", QString::fromStdString(token)},
                                       {"xdg:schema", "org.example.Other"}},
                                      "789:GHI", "text/plain");
    ASSERT_TRUE(written);
    EXPECT_EQ(store.string(token), "789:GHI");
    store.set("123:ABC", token);
    EXPECT_EQ(store.string(token), "123:ABC");
    EXPECT_EQ(itemsFor("com.tovrin.test", token), 1);
}

// A locked keyring asks the user; with no one to answer, reads find nothing and writes change
// nothing, and neither hangs.
TEST_F(SecretServiceStoreTest, ALockedKeyringWithoutAnAnswerReadsAsAbsent) {
    store.set("123:ABC", token);
    const QDBusMessage locked =
        callSecretService("/org/freedesktop/secrets", "org.freedesktop.Secret.Service", "Lock",
                          {QVariant::fromValue(QList{defaultCollection()})});
    ASSERT_EQ(locked.type(), QDBusMessage::ReplyMessage) << locked.errorMessage().toStdString();

    SecretServiceStore impatient("com.tovrin.test", std::chrono::seconds(2));
    const auto started = std::chrono::steady_clock::now();
    EXPECT_FALSE(impatient.string(token));
    impatient.set("456:DEF", token);
    EXPECT_LT(std::chrono::steady_clock::now() - started, std::chrono::seconds(20));
    EXPECT_EQ(itemsFor("com.tovrin.test", token), 1);
}

} // namespace
} // namespace tovrin
