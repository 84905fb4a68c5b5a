#include "services/update/Ed25519Key.h"

#include <gtest/gtest.h>
#include <memory>
#include <openssl/evp.h>
#include <string>

namespace tovrin {
namespace {

std::string base64(const std::string& bytes) {
    std::string text(4 * ((bytes.size() + 2) / 3) + 1, '\0');
    const int n =
        EVP_EncodeBlock(reinterpret_cast<unsigned char*>(text.data()),
                        reinterpret_cast<const unsigned char*>(bytes.data()), static_cast<int>(bytes.size()));
    text.resize(static_cast<std::size_t>(n));
    return text;
}

// A key pair made for the test, as the release maintainer makes one.
class SigningKey {
public:
    SigningKey() {
        std::unique_ptr<EVP_PKEY_CTX, decltype(&EVP_PKEY_CTX_free)> context(
            EVP_PKEY_CTX_new_id(EVP_PKEY_ED25519, nullptr), EVP_PKEY_CTX_free);
        EVP_PKEY* made = nullptr;
        EXPECT_EQ(EVP_PKEY_keygen_init(context.get()), 1);
        EXPECT_EQ(EVP_PKEY_keygen(context.get(), &made), 1);
        m_key.reset(made);
    }
    std::string publicBase64() const {
        std::string raw(32, '\0');
        std::size_t size = raw.size();
        EXPECT_EQ(
            EVP_PKEY_get_raw_public_key(m_key.get(), reinterpret_cast<unsigned char*>(raw.data()), &size), 1);
        return base64(raw);
    }
    std::string sign(const std::string& message) const {
        std::unique_ptr<EVP_MD_CTX, decltype(&EVP_MD_CTX_free)> context(EVP_MD_CTX_new(), EVP_MD_CTX_free);
        std::string signature(64, '\0');
        std::size_t size = signature.size();
        EXPECT_EQ(EVP_DigestSignInit(context.get(), nullptr, nullptr, nullptr, m_key.get()), 1);
        EXPECT_EQ(EVP_DigestSign(context.get(), reinterpret_cast<unsigned char*>(signature.data()), &size,
                                 reinterpret_cast<const unsigned char*>(message.data()), message.size()),
                  1);
        return base64(signature);
    }

private:
    std::unique_ptr<EVP_PKEY, decltype(&EVP_PKEY_free)> m_key{nullptr, EVP_PKEY_free};
};

TEST(Ed25519KeyTest, OnlyTheBase64OfThirtyTwoBytesIsAKey) {
    const SigningKey pair;
    const std::string good = pair.publicBase64();
    EXPECT_TRUE(Ed25519Key::fromBase64(good));
    for (const std::string& bad :
         {std::string(), good.substr(0, 40), good + "AAAA", " " + good, good.substr(0, 43) + "*",
          base64(std::string(31, 'k')), std::string("PUT-YOUR-KEY-HERE"),
          good.substr(0, 42) + "==", good.substr(0, 20) + "=" + good.substr(21)}) {
        EXPECT_FALSE(Ed25519Key::fromBase64(bad)) << '"' << bad << '"';
    }
}

TEST(Ed25519KeyTest, ASignatureVerifiesOnlyForItsKeyAndItsExactBytes) {
    const SigningKey maintainer;
    const SigningKey stranger;
    const auto key = Ed25519Key::fromBase64(maintainer.publicBase64());
    ASSERT_TRUE(key);
    constexpr char bytes[] = "\x1f\x8b\x08\x00 release bytes\0with a zero";
    const std::string archive(bytes, sizeof bytes - 1);
    const std::string signature = maintainer.sign(archive);

    EXPECT_TRUE(key->verifies(signature, archive));
    EXPECT_FALSE(key->verifies(stranger.sign(archive), archive)) << "a foreign key's signature";
    std::string tampered = archive;
    tampered[5] ^= 1;
    EXPECT_FALSE(key->verifies(signature, tampered)) << "one bit changed";
    EXPECT_FALSE(key->verifies(signature, archive.substr(0, archive.size() - 1))) << "one byte short";
    EXPECT_FALSE(key->verifies(signature.substr(0, 84), archive)) << "a truncated signature";
    EXPECT_FALSE(key->verifies("not base64 at all!", archive));
    EXPECT_FALSE(key->verifies("", archive));
}

} // namespace
} // namespace tovrin
